#include "tests/gallery/ProgramTest.h"

#include "gallery/SceneTable.h"

#include <numeric>

namespace tidalume::gallery {

namespace {

/// The viewer's window is on the display that the environment names.
class Programs : public ProgramTest {
  protected:
    static std::string gallery(const std::string& options) { return GALLERY_PROGRAM " --size 97x161 " + options; }

    /// Plays a script.
    std::string viewer(const std::string& script, const std::string& options = "--scene metaballs") const {
        write("script", script);
        return "timeout 300 " VIEWER_PROGRAM " --size 97x161 --script script " + options;
    }

    /// The last frame of a scene.
    Picture headlessPicture(const std::string& scene, int frames, const std::string& options = "") const {
        runsWell(gallery("--out drawn --scene " + scene + " --frames " + std::to_string(frames) + options));
        return picture("drawn/" + scene + ".png");
    }
};

} // namespace

// A number key for each scene.
TEST_F(Programs, ShowTheSamePictures) {
    Picture photo(31, 17);
    std::iota(photo.rgba.begin(), photo.rgba.end(), 0);
    headless::writePng(path("photo.png"), photo);
    for (const std::string options : {"", " --background photo.png"}) {
        std::string script;
        for (std::size_t i = 0; i < sceneTable().size(); ++i) {
            script += std::to_string(30 * i) + " key " + std::to_string(i + 1) + "\n";
            script += std::to_string(30 * i + 29) + " save " + sceneTable()[i].name + ".png\n";
        }
        runsWell(viewer(script + "999 quit\n", options));
        runsWell(gallery("--out all --frames 30" + options));
        for (const SceneEntry& entry : sceneTable()) {
            const std::string name = entry.name;
            EXPECT_EQ(picture(name + ".png").rgba, picture("all/" + name + ".png").rgba) << name << options;
            EXPECT_THAT(load("all/" + name + ".webp"), testing::StartsWith("RIFF"));
            EXPECT_THAT(load("all/index.html"), testing::HasSubstr("src=\"" + name + ".webp\""));
        }
    }
}

// The drops' motion repeats after 120 frames, and the demonstration's finger is up in the last of them.
TEST_F(Programs, ViewerTakesMouseAndFingers) {
    runsWell(viewer("20 down 48 30\n20 down 15 100 0\n20 down 80 100 7\n30 move 48 60\n30 move 80 60 7\n"
                    "60 save down.png\n61 up 48 60\n61 up 15 100 0\n61 up 80 60 7\n119 save up.png\n120 quit\n"));
    const Picture down = picture("down.png");
    const Picture untouched = headlessPicture("metaballs", 61);
    for (const auto& [x, y] : {std::pair(48, 60), {15, 100}, {80, 60}}) {
        EXPECT_GT(down.pixel(x, y)[0], 140) << x << ", " << y;
        EXPECT_LT(untouched.pixel(x, y)[0], 140) << x << ", " << y;
    }
    EXPECT_EQ(picture("up.png").rgba, headlessPicture("metaballs", 120).rgba);
}

// What the window is made to show during a pause adds no step to the two as it begins and ends.
TEST_F(Programs, ViewersKeysPauseRemakeTheContextChangeScenesRestartAndSave) {
    runsWell(viewer("10 key Space\n15 save paused.png\n16 key c\n20 resize 120x90\n60 save wide.png\n"
                    "61 resize 97x161\n99 save still.png\n100 key Space\n100 save on.png\n110 key Right\n"
                    "112 save right.png\n113 key Left\n120 key c\n130 key c\n142 save left.png\n143 key r\n"
                    "172 save restarted.png\n173 key s\n180 key q\n"));
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
        {"paused.png", "metaballs", 11, ""},
        {"still.png", "metaballs", 11, ""},
        {"on.png", "metaballs", 12, ""},
        {"right.png", "particles", 3, ""},
        {"left.png", "metaballs", 30, ""},
        {"restarted.png", "metaballs", 30, " --seed 2"},
        {"tidalume-metaballs-1.png", "metaballs", 31, " --seed 2"},
    };
    for (const auto& [file, scene, frames, options] : rows)
        EXPECT_EQ(picture(file).rgba, headlessPicture(scene, frames, options).rgba) << file;
    EXPECT_NE(picture("restarted.png").rgba, picture("left.png").rgba) << "another seed";
    EXPECT_EQ(picture("wide.png").width, 120);
}

// It takes a window manager to make a window fill the screen. What the surface does not cover stays black.
TEST_F(Programs, ViewerFollowsTheSizeOfTheWindow) {
    const std::string script =
        "60 resize 160x90\n120 save wide.png\n121 key f\n240 save full.png\n241 key f\n360 save back.png\n361 quit\n";
    runsWell("openbox --sm-disable & manager=$!; sleep 1; " + viewer(script) +
             "; status=$?; kill $manager; exit $status");
    for (const auto& [file, width, height] :
         {std::tuple("wide.png", 160, 90), {"full.png", 640, 480}, {"back.png", 160, 90}}) {
        const Picture shown = picture(file);
        EXPECT_EQ(std::pair(shown.width, shown.height), std::pair(width, height)) << file;
        for (std::size_t i = 0; i < shown.rgba.size(); i += 4)
            ASSERT_GT(shown.rgba[i] + shown.rgba[i + 1] + shown.rgba[i + 2], 0) << file;
    }
}

TEST_F(Programs, ViewersTitleShowsSceneFrameTimeAndDriver) {
    run(viewer("100000000 quit\n") + R"( & for i in $(seq 2000); do
        sleep 0.1; xwininfo -root -tree | grep '"Metaballs' && break; done; kill $!)");
    EXPECT_THAT(load("output"), testing::ContainsRegex("\"Metaballs - [0-9]+\\.[0-9] ms - .*llvmpipe"));
}

TEST_F(Programs, BadInputGetsOneLineAndStatusTwo) {
    write("broken.png", "\x89PNG\r\n\x1A\n");
    isRefused(gallery("--scene volcano"), "--scene: there is no scene \"volcano\"; the scenes are: water, waves");
    isRefused(GALLERY_PROGRAM " --size 0x10", "--size: \"0x10\" is not WIDTHxHEIGHT");
    isRefused(GALLERY_PROGRAM " --size 100000x10", "--size 100000x10: width 100000 is above the driver's limit of");
    isRefused(gallery("--frames 0"), "--frames: Value 0 not in range");
    isRefused(gallery("--background absent.png"), "--background absent.png: there is no such file");
    isRefused(gallery("--background broken.png"), "--background broken.png: broken PNG");
    isRefused(gallery("--out broken.png"), "--out broken.png: ");
    EXPECT_FALSE(std::filesystem::exists(path("out"))) << "bad input leaves no folder behind";

    isRefused(viewer("0 quit\n", "--background absent.png"), "--background absent.png: there is no such file");
    isRefused(viewer("# first\n\n0 down 5\n"), "script, line 3: two coordinates");
    isRefused(viewer("0 down 5 5 10\n"), "line 1: the finger is a number from 0 to 9");
    isRefused(viewer("0 resize -5x5\n"), "is not WIDTHxHEIGHT");
    isRefused(viewer("0 key Nose\n"), "no key \"Nose\"");
    isRefused(viewer("0 save\n"), "something is missing");
    isRefused(viewer("first quit\n"), "begins with the number of a frame");
    isRefused(viewer("5 key c\n4 quit\n"), "line 2: the frames go back");
    isRefused("unset DISPLAY; XDG_RUNTIME_DIR=/tmp " + viewer("0 quit\n"), "there is no display");
}

} // namespace tidalume::gallery
