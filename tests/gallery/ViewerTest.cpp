#include "gallery/SceneTable.h"
#include "tests/gallery/ProgramTest.h"

#include <cstdlib>

namespace tidalume::gallery {

namespace {

/// On the display that the environment names.
class Viewer : public ProgramTest {
  protected:
    /// Plays a script in a window of 97 x 161 pixels.
    std::string playing(const std::string& script, const std::string& options = "--scene metaballs") const {
        write("script", script);
        return "timeout 300 '" VIEWER_PROGRAM "' --script script --size 97x161 " + options;
    }

    /// Drawn without a window, with the seed that the viewer begins with.
    Picture headlessPicture(const std::string& scene, int frames, const std::string& options = "") const {
        runsWell("'" GALLERY_PROGRAM "' --seed 1 --out drawn --size 97x161 --frames " + std::to_string(frames) +
                 " --scene " + scene + options);
        return picture("drawn/" + scene + ".png");
    }

    /// Number of pixels in a square around a place whose red is bright, as drops are.
    static int warmPixels(const Picture& picture, int x, int y, int reach) {
        int count = 0;
        for (int i = x - reach; i <= x + reach; ++i) {
            for (int j = y - reach; j <= y + reach; ++j)
                count += picture.pixel(i, j)[0] > 140 ? 1 : 0;
        }
        return count;
    }
};

} // namespace

// A number key for each scene.
TEST_F(Viewer, ShowsWhatTheHeadlessGalleryDraws) {
    Picture photo(31, 17);
    for (std::size_t i = 0; i < photo.rgba.size(); ++i)
        photo.rgba[i] = static_cast<std::uint8_t>(i % 4 == 3 ? 255 : i * i);
    headless::writePng(path("photo.png"), photo);
    for (const std::string options : {"", " --background photo.png"}) {
        std::string script;
        for (std::size_t i = 0; i < sceneTable().size(); ++i) {
            script += std::to_string(30 * i) + " key " + std::to_string(i + 1) + "\n";
            script += std::to_string(30 * i + 29) + " save " + sceneTable()[i].name + ".png\n";
        }
        runsWell(playing(script + "999 quit\n", options));
        for (const SceneEntry& entry : sceneTable()) {
            const Picture shown = picture(entry.name + std::string(".png"));
            EXPECT_EQ(shown.rgba, headlessPicture(entry.name, 30, options).rgba) << entry.name << options;
        }
    }
}

TEST_F(Viewer, TakesMouseAndFingers) {
    runsWell(playing("20 down 48 60\n20 down 15 100 0\n20 down 80 100 7\n60 save down.png\n"
                     "61 up 48 60\n61 up 15 100 0\n61 up 80 100 7\n98 save up.png\n99 quit\n"));
    for (const auto& [x, y] : {std::pair(48, 60), {15, 100}, {80, 100}})
        EXPECT_GT(warmPixels(picture("down.png"), x, y, 5), 100) << x << ", " << y;
    EXPECT_NE(picture("down.png").rgba, picture("up.png").rgba);
}

// Ten steps, one more as the pause begins, and one more as it ends: what the window is made to show meanwhile adds
// none.
TEST_F(Viewer, StandsStillWhilePaused) {
    runsWell(playing("10 key Space\n15 save a.png\n16 key c\n20 resize 120x90\n60 save wide.png\n61 resize 97x161\n"
                     "99 save b.png\n100 key Space\n100 save c.png\n101 quit\n"));
    EXPECT_EQ(picture("a.png").rgba, headlessPicture("metaballs", 11).rgba);
    EXPECT_EQ(picture("wide.png").width, 120);
    EXPECT_EQ(picture("b.png").rgba, picture("a.png").rgba);
    EXPECT_EQ(picture("c.png").rgba, headlessPicture("metaballs", 12).rgba);
}

TEST_F(Viewer, KeysRestartSaveRemakeTheContextAndChangeScenes) {
    runsWell(playing("10 key Right\n12 save right.png\n20 key Left\n30 key c\n40 key c\n49 save left.png\n50 key r\n"
                     "79 save again.png\n80 key s\n90 key q\n"));
    EXPECT_EQ(picture("right.png").rgba, headlessPicture("particles", 3).rgba);
    EXPECT_EQ(picture("left.png").rgba, headlessPicture("metaballs", 30).rgba);
    EXPECT_NE(picture("again.png").rgba, picture("left.png").rgba) << "another seed";
    EXPECT_EQ(picture("tidalume-metaballs-1.png").width, 97);
}

// It takes a window manager to make a window fill the screen. What the surface does not cover stays black.
TEST_F(Viewer, FollowsTheSizeOfTheWindow) {
    const std::string viewer = playing(
        "60 resize 160x90\n120 save wide.png\n121 key f\n240 save full.png\n241 key f\n360 save back.png\n361 quit\n");
    runsWell("openbox --sm-disable & manager=$!; sleep 1; " + viewer + "; status=$?; kill $manager; exit $status");
    for (const auto& [name, width, height] :
         {std::tuple("wide.png", 160, 90), {"full.png", 640, 480}, {"back.png", 160, 90}}) {
        const Picture shown = picture(name);
        ASSERT_EQ(std::pair(shown.width, shown.height), std::pair(width, height)) << name;
        int black = 0;
        for (std::size_t i = 0; i < shown.rgba.size(); i += 4)
            black += shown.rgba[i] + shown.rgba[i + 1] + shown.rgba[i + 2] == 0 ? 1 : 0;
        EXPECT_EQ(black, 0) << name;
        EXPECT_GT(warmPixels(shown, width / 2, height / 2, height / 2 - 1), 500) << name;
    }
}

TEST_F(Viewer, TitleShowsSceneFrameTimeAndDriver) {
    run(playing("100000000 quit\n") + R"( & for i in $(seq 2000); do
        sleep 0.1; xwininfo -root -tree | grep '"Metaballs' && break; done; kill $!)");
    EXPECT_THAT(load("output"), testing::ContainsRegex("\"Metaballs - [0-9]+\\.[0-9] ms - .*llvmpipe"));
}

TEST_F(Viewer, BadInputGetsOneLineAndStatusTwo) {
    const std::pair<const char*, const char*> rows[] = {
        {"# first\n\n0 down 5\n", "script, line 3: two coordinates"},
        {"0 down 5 5 10\n", "line 1: the finger is a number from 0 to 9"},
        {"0 resize -5x5\n", "is not WIDTHxHEIGHT"},
        {"0 key Nose\n", "no key \"Nose\""},
        {"0 save\n", "something is missing"},
        {"first quit\n", "begins with the number of a frame"},
        {"5 key c\n4 quit\n", "line 2: the frames go back"},
    };
    for (const auto& [script, reason] : rows)
        isRefused(playing(script), reason);
    for (const std::string size : {"0x0", "-5x5"})
        isRefused("'" VIEWER_PROGRAM "' --size " + size, "--size: \"" + size + "\" is not WIDTHxHEIGHT");
    isRefused(playing("0 quit\n", "--background absent.png"), "--background absent.png: there is no such file");
    unsetenv("DISPLAY");
    isRefused("XDG_RUNTIME_DIR=/tmp " + playing("0 quit\n"), "there is no display");
}

} // namespace tidalume::gallery
