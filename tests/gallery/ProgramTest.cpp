#include "gallery/SceneTable.h"
#include "headless/PictureFile.h"
#include "tests/support/Files.h"
#include "tests/support/Pictures.h"

#include <gmock/gmock.h>
#include <numeric>
#include <set>
#include <sys/wait.h>

namespace tidalume::gallery {

namespace {

using headless::readPicture;

/// The programs run in a folder of the test's own. The viewer's window is on the display that the environment names.
class Programs : public testing::Test {
  protected:
    /// Runs a command line of the shell, five minutes at most, and leaves its standard output and error in the file
    /// "output".
    /// @return its status; 124 where the time was up
    static int run(const std::string& command) {
        writeFile("command", command);
        return WEXITSTATUS(std::system("timeout --kill-after=10 300 sh command >output 2>&1"));
    }

    static void runsWell(const std::string& command) {
        ASSERT_EQ(run(command), 0) << command << ": " << fileContent("output");
    }

    /// The command says why it does nothing, in one line that begins with its name, and ends with status 2.
    static void isRefused(const std::string& command, const std::string& reason) {
        EXPECT_EQ(run(command), 2) << command;
        const std::string output = fileContent("output");
        EXPECT_THAT(output, testing::HasSubstr(reason)) << command;
        EXPECT_EQ(output.find('\n') + 1, output.size()) << "one line: " << output;
        const std::filesystem::path name = output.substr(0, output.find(": "));
        EXPECT_THAT(command, testing::HasSubstr("/" + name.filename().string() + " ")) << output;
    }

    /// How long an animation lasts: the first byte of each frame's duration in its WebP file.
    static int milliseconds(const std::string& path) {
        const std::string bytes = fileContent(path);
        int sum = 0;
        for (auto frame = bytes.find("ANMF"); frame != std::string::npos; frame = bytes.find("ANMF", frame + 1))
            sum += static_cast<std::uint8_t>(bytes[frame + 20]);
        return sum;
    }

    static std::string gallery(const std::string& options) {
        const bool hasSize = options.find("--size") != std::string::npos;
        return GALLERY_PROGRAM + std::string(hasSize ? " " : " --size 97x161 ") + options;
    }

    /// Plays a script.
    static std::string viewer(const std::string& script, const std::string& options = "--scene metaballs") {
        writeFile("script", script);
        return VIEWER_PROGRAM " --size 97x161 --script script " + options;
    }

    /// A window manager starts the command line once it manages windows (SDL waits without end for a window that one
    /// overlooks as it starts), in a folder of its own choice, and ends with it.
    static std::string managed(const std::string& command) {
        const std::string folder = std::filesystem::current_path();
        writeFile("managed", "cd " + folder + "; " + command + "; echo $? >status; openbox --exit");
        return "openbox --sm-disable --startup 'sh " + folder + "/managed'; exit $(cat status)";
    }

    /// The picture after that many frames of a scene.
    static Picture headlessPicture(const std::string& scene, int frames, const std::string& options = "") {
        runsWell(
            gallery("--out drawn --scene " + scene + " --frames 1 --ahead " + std::to_string(frames - 1) + options));
        return readPicture("drawn/" + scene + ".png");
    }

    static void shows(const std::string& file, const Picture& expected, const std::string& what = "") {
        EXPECT_EQ(difference(readPicture(file), expected), "") << file << what;
    }

  private:
    const WorkingFolder mFolder;
};

} // namespace

// A number key for each scene.
TEST_F(Programs, ShowTheSamePictures) {
    Picture photo(31, 17);
    std::iota(photo.rgba.begin(), photo.rgba.end(), 0);
    headless::writePng("photo.png", photo);
    std::set<std::vector<std::uint8_t>> waters;
    for (const std::string options : {"", " --background photo.png", " --ground tiles"}) {
        std::string script;
        for (std::size_t i = 0; i < sceneTable().size(); ++i) {
            script += std::to_string(30 * i) + " key " + std::to_string(i + 1) + "\n";
            script += std::to_string(30 * i + 29) + " save " + sceneTable()[i].name + ".png\n";
        }
        runsWell(viewer(script + "999 quit\n", options));
        runsWell(gallery("--out all --ahead 20 --frames 10" + options));
        for (const SceneEntry& entry : sceneTable()) {
            const std::string name = entry.name;
            shows(name + ".png", readPicture("all/" + name + ".png"), options);
            EXPECT_EQ(milliseconds("all/" + name + ".webp"), 10 * 1000 / 60) << name;
            EXPECT_THAT(fileContent("all/index.html"),
                        testing::HasSubstr(name + ".png\" media=\"(prefers-reduced-motion: reduce)\">\n<img src=\"" +
                                           name + ".webp\" width=\"97\" height=\"161\""));
        }
        shows("all/water-rain.png", headlessPicture("water", 30, " --size 48x80 --preset rain" + options));
        waters.insert(readPicture("water.png").rgba);
    }
    EXPECT_EQ(waters.size(), 3U) << "a picture for each choice of background";
}

// Only fingers make blobs then, which shrink away when they lift. Notes are over the picture.
TEST_F(Programs, ViewerTakesMouseAndFingers) {
    const std::string empty = " --set drops=0 --set pools=0";
    runsWell(viewer("20 down 48 30\n20 down 15 100 0\n20 down 80 100 7\n30 move 48 60\n30 move 80 60 7\n"
                    "60 save down.png\n61 up 48 60\n61 up 15 100 0\n61 up 80 60 7\n119 save up.png\n"
                    "120 drop absent.png\n120 save why.png\n121 key Up\n121 key +\n121 save value.png\n"
                    "122 key +\n122 save larger.png\n123 key Escape\n",
                    "--scene metaballs" + empty));
    const Picture down = readPicture("down.png");
    const Picture untouched = headlessPicture("metaballs", 10, empty);
    for (const auto& [x, y] : {std::pair(48, 60), {15, 100}, {80, 60}}) {
        EXPECT_GT(down.pixel(x, y)[0], 140) << x << ", " << y;
        EXPECT_LT(untouched.pixel(x, y)[0], 140) << x << ", " << y;
    }
    shows("up.png", untouched);
    for (const auto& [note, last] :
         {std::pair("why.png", "up.png"), {"value.png", "why.png"}, {"larger.png", "value.png"}})
        EXPECT_NE(difference(readPicture(note), readPicture(last)), "") << note;
}

// What the window is made to show during a pause adds no step. Pause and help are over the picture, of which they
// change nothing.
TEST_F(Programs, ViewersKeysPauseHelpRemakeTheContextChangeScenesRestartAndSave) {
    runsWell(viewer("10 key Space\n11 key s\n12 save paused.png\n13 key h\n15 key s\n16 save help.png\n17 key h\n"
                    "19 save again.png\n20 key c\n24 resize 120x90\n60 key h\n62 save low.png\n63 key h\n64 key s\n"
                    "65 resize 97x161\n103 key s\n104 key Space\n104 save on.png\n113 down 48 80 3\n114 key 1\n"
                    "114 key Left\n115 move 60 90 3\n116 save left.png\n117 key 3\n117 key Right\n124 key c\n"
                    "128 key c\n146 save right.png\n147 key r\n176 save restarted.png\n177 key q\n"));
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {"tidalume-metaballs-1.png", "metaballs", 10, ""},
        {"tidalume-metaballs-2.png", "metaballs", 10, ""},
        {"tidalume-metaballs-3.png", "metaballs", 10, " --size 120x90"},
        {"tidalume-metaballs-4.png", "metaballs", 10, ""},
        {"on.png", "metaballs", 11, ""},
        {"left.png", "vector", 3, ""},
        {"right.png", "metaballs", 30, ""},
        {"restarted.png", "metaballs", 30, " --seed 2"},
    };
    for (const auto& [file, scene, frames, options] : rows)
        shows(file, headlessPicture(scene, frames, options));
    EXPECT_NE(difference(readPicture("restarted.png"), readPicture("right.png")), "") << "another seed";
    shows("again.png", readPicture("paused.png"));
    const Picture bare = readPicture("tidalume-metaballs-1.png");
    const auto changedRows = [&](const std::string& file) {
        const Picture shown = readPicture(file);
        std::set<int> rows;
        for (int y = 0; y < bare.height; ++y) {
            if (!std::equal(shown.pixel(0, y), shown.pixel(0, y) + 4 * bare.width, bare.pixel(0, y))) rows.insert(y);
        }
        return rows;
    };
    EXPECT_THAT(changedRows("paused.png"), testing::Each(testing::Gt(bare.height / 2)));
    EXPECT_THAT(changedRows("paused.png"), testing::SizeIs(testing::Gt(15)));
    EXPECT_THAT(changedRows("help.png"), testing::Contains(0));
    EXPECT_EQ(readPicture("low.png").pixel(119, 0)[0], readPicture("tidalume-metaballs-3.png").pixel(119, 0)[0])
        << "beside the help, all of which is in the window";
}

// Each is seen after a restart, which keeps settings and background. From Dew's ground, ember is the third.
TEST_F(Programs, ViewersKeysAndDroppedFilesSetWhatTheCommandLineSets) {
    headless::writePng("photo.png", headlessPicture("vector", 1));
    runsWell(viewer("0 key -\n0 key Up\n0 key +\n0 key r\n30 key s\n31 key p\n31 key p\n31 key +\n31 key r\n61 key s\n"
                    "62 drop photo.png\n62 drop absent.png\n62 key r\n92 key s\n"
                    "93 key g\n93 key g\n93 key g\n93 key g\n93 key r\n123 key s\n124 quit\n",
                    "--scene metaballs --preset mercury"));
    EXPECT_THAT(fileContent("output"), testing::HasSubstr("tidalume-viewer: absent.png: there is no such file"));
    const std::string dew = " --preset dew --set touchRadius=0.118";
    const std::string options[] = {" --preset mercury --set palette=lava --set touchRadius=0.146", dew,
                                   dew + " --background photo.png", dew + " --ground ember"};
    for (int i = 0; i < 4; ++i)
        shows("tidalume-metaballs-" + std::to_string(i + 1) + ".png",
              headlessPicture("metaballs", 31, options[i] + " --seed " + std::to_string(i + 2)), options[i]);
}

// It takes a window manager to make a window fill the screen. What the surface does not cover stays black.
TEST_F(Programs, ViewerFollowsTheSizeOfTheWindow) {
    const std::string script =
        "60 resize 160x90\n120 save wide.png\n121 key f\n240 save full.png\n241 key f\n360 save back.png\n361 quit\n";
    runsWell(managed(viewer(script)));
    for (const auto& [file, width, height] :
         {std::tuple("wide.png", 160, 90), {"full.png", 640, 480}, {"back.png", 160, 90}}) {
        const Picture shown = readPicture(file);
        EXPECT_EQ(std::pair(shown.width, shown.height), std::pair(width, height)) << file;
        for (std::size_t i = 0; i < shown.rgba.size(); i += 4)
            ASSERT_GT(shown.rgba[i] + shown.rgba[i + 1] + shown.rgba[i + 2], 0) << file;
    }
    writeFile("script", "0 save fitting.png\n1 quit\n");
    runsWell(VIEWER_PROGRAM " --script script");
    const Picture fitting = readPicture("fitting.png");
    EXPECT_LT(fitting.height, 480) << "the screen's height";
    EXPECT_NEAR(1.0 * fitting.width / fitting.height, 9 / 16.0, 0.01);
}

TEST_F(Programs, ViewersTitleShowsSceneFrameTimeAndDriver) {
    run(viewer("100000000 quit\n") + R"( & for i in $(seq 2000); do
        sleep 0.1; xwininfo -root -tree | grep '"Metaballs' && break; done; kill $!)");
    EXPECT_THAT(fileContent("output"), testing::ContainsRegex("\"Metaballs - [0-9]+\\.[0-9] ms - .*llvmpipe"));
}

// Counts how often it wakes within two seconds, and the fonts that are open; then another window covers it.
TEST_F(Programs, ViewerSleepsWhilePausedAndShowsWhatWasCovered) {
    run(viewer("5 key c\n10 key Space\n") + R"( & for i in $(seq 600); do
        sleep 0.1; xwininfo -root -tree | grep -q '"Metaballs - paused' && break; done
        wakes() { awk '/^voluntary/ { print $2 }' /proc/$!/status; }
        before=$(wakes); sleep 2; echo $(($(wakes) - before)); ls -l /proc/$!/fd | grep -c ttf
        cp $SCREEN before; echo '2 quit' >script; )" VIEWER_PROGRAM R"( --size 97x161 --script script
        for i in $(seq 600); do sleep 0.1; cmp -s before $SCREEN && echo uncovered && break; done; kill $!)");
    EXPECT_LT(std::stoi(fileContent("output")), 20);
    EXPECT_THAT(fileContent("output"), testing::EndsWith("\n1\nuncovered\n"));
}

TEST_F(Programs, BadInputGetsOneLineAndStatusTwo) {
    writeFile("broken.png", "\x89PNG\r\n\x1A\n");
    isRefused(gallery("--scene volcano"), "--scene: there is no scene \"volcano\"; the scenes are: water, waves");
    isRefused(GALLERY_PROGRAM " --size 0x10", "--size: \"0x10\" is not WIDTHxHEIGHT");
    isRefused(GALLERY_PROGRAM " --size 100000x10", "--size 100000x10: width 100000 is above the driver's limit of");
    isRefused(gallery("--frames 0"), "--frames: \"0\" is not a whole number from 1 to 36000");
    isRefused(GALLERY_PROGRAM " --ahead -1", "--ahead: \"-1\" is not a whole number from 0 to 36000");
    isRefused(gallery("--seed abc"), "--seed: \"abc\" is not a whole number from 0 to 4294967295");
    isRefused(gallery("--background absent.png"), "--background: absent.png: there is no such file");
    isRefused(gallery("--background broken.png"), "--background: broken.png: broken PNG");
    isRefused(gallery("--ground moss"), "--ground: there is no ground \"moss\"; the grounds are: sand, tiles");
    isRefused(gallery("--ground sand --background a.png"), "--background excludes --ground");
    isRefused(gallery("--preset tea"), "--preset: there is no preset \"tea\"; the presets are water: brook, pool");
    isRefused(gallery("--scene water --set depth=2"),
              "--set depth=2: \"2\" is not a number from 0 to 0.5 shorter sides");
    isRefused(gallery("--scene water --set depth=nan"), "\"nan\" is not a number from 0 to 0.5 shorter sides");
    isRefused(gallery("--scene water --set simulation=sea"), "\"sea\" is not one of brook, pond");
    isRefused(gallery("--scene pond --set salt=1"), "--set salt=1: scene pond has simulation, fieldScale");
    isRefused(gallery("--out broken.png"), "--out: broken.png: Not a directory");
    EXPECT_FALSE(std::filesystem::exists("out")) << "bad input leaves no folder behind";

    isRefused(viewer("# first\n\n0 down 5\n"), "script, line 3: two coordinates");
    isRefused(viewer("0 down 5 5 10\n"), "line 1: the finger is a number from 0 to 9");
    isRefused(viewer("0 key Nose\n"), "no key \"Nose\"");
    isRefused(viewer("0 save\n"), "something is missing");
    isRefused(viewer("first quit\n"), "begins with the number of a frame");
    isRefused(viewer("5 key c\n4 quit\n"), "line 2: the frames go back");
    isRefused("unset DISPLAY; XDG_RUNTIME_DIR=/tmp " + viewer("0 quit\n"), "there is no display");

    isRefused(BENCH_PROGRAM " --filter '['", "--filter: \"[\" is not an extended regular expression");
    isRefused(SOURCE_DIR "/scripts/install-dependencies --all", "nothing or --basic is expected, not \"--all\"");
    isRefused(SOURCE_DIR "/scripts/renew-abi --all", "takes no arguments, not \"--all\"");
}

// Of the preset, by the seed. Nothing is before them.
TEST_F(Programs, GalleryDrawsTheGround) {
    const auto ground = [](const std::string& options) {
        return headlessPicture("metaballs", 1, " --set drops=0 --set pools=0" + options);
    };
    EXPECT_LT(ground(" --preset lava").pixel(0, 0)[0], 64);
    EXPECT_GT(ground(" --preset ink").pixel(0, 0)[0], 128) << "ink would not be seen on a dark one";
    EXPECT_STREQ(groundOf(sceneTable()[0], "ink"), sceneTable()[0].ground) << "water has no ink";
    EXPECT_NE(difference(ground(" --ground night"), ground(" --ground night --seed 4294967295")), "");
}

} // namespace tidalume::gallery
