#include "headless/PictureFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidalume::gallery {

namespace {

struct Outcome {
    int status;
    std::string output; // standard output and error
};

/// Runs in a folder of its own, on the display that the environment names.
class Viewer : public testing::Test {
  protected:
    Viewer() { std::filesystem::create_directories(mFolder); }
    ~Viewer() override { std::filesystem::remove_all(mFolder); }

    Outcome run(const std::string& command) const {
        std::FILE* pipe = popen(("cd '" + mFolder.string() + "' && timeout 60 " + command + " 2>&1").c_str(), "r");
        Outcome outcome = {};
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            outcome.output += buffer;
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

    /// Plays a script with the metaballs in a window of 97 x 161 pixels.
    Outcome play(const std::string& script, const std::string& options = "--scene metaballs") const {
        std::ofstream(mFolder / "script") << script;
        return run("'" VIEWER_PROGRAM "' --size 97x161 --script script " + options);
    }

    Picture picture(const std::string& name) const { return headless::readPicture((mFolder / name).string()); }

    /// What tidalume-gallery draws after that many frames with the seed that the viewer begins with.
    Picture headlessPicture(const std::string& scene, int frames) const {
        const std::string out = scene + std::to_string(frames);
        const Outcome outcome = run("'" GALLERY_PROGRAM "' --seed 1 --size 97x161 --scene " + scene + " --frames " +
                                    std::to_string(frames) + " --out " + out);
        EXPECT_EQ(outcome.status, 0) << outcome.output;
        return picture(out + "/" + scene + ".png");
    }

    /// Number of pixels in a square around a place whose red is bright, as drops are.
    static int warmPixels(const Picture& picture, int x, int y) {
        int count = 0;
        for (int dy = -5; dy <= 5; ++dy) {
            for (int dx = -5; dx <= 5; ++dx)
                count += picture.pixel(x + dx, y + dy)[0] > 140 ? 1 : 0;
        }
        return count;
    }

  private:
    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("tidalume-viewer-" + std::to_string(::getpid()));
};

} // namespace

TEST_F(Viewer, ShowsWhatTheHeadlessGalleryDraws) {
    for (const std::string scene : {"water", "metaballs", "vector"}) {
        const Outcome outcome = play("29 save a.png\n30 quit\n", "--scene " + scene);
        ASSERT_EQ(outcome.status, 0) << outcome.output;
        EXPECT_EQ(picture("a.png").rgba, headlessPicture(scene, 30).rgba) << scene;
    }
}

TEST_F(Viewer, GoesOnAfterContextLosses) {
    const Outcome outcome = play("10 key c\n20 key c\n29 save a.png\n30 quit\n");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(picture("a.png").rgba, headlessPicture("metaballs", 30).rgba);
}

TEST_F(Viewer, TakesMouseAndFingers) {
    const Outcome outcome = play("20 down 48 60\n20 down 15 100 0\n20 down 80 100 7\n60 save down.png\n"
                                 "61 up 48 60\n61 up 15 100 0\n61 up 80 100 7\n98 save up.png\n99 quit\n");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Picture down = picture("down.png");
    for (const auto& [x, y] : {std::pair(48, 60), std::pair(15, 100), std::pair(80, 100)})
        EXPECT_GT(warmPixels(down, x, y), 100) << x << ", " << y;
    EXPECT_NE(down.rgba, picture("up.png").rgba);
}

TEST_F(Viewer, KeysPauseRestartAndChangeScenes) {
    const Outcome outcome = play("10 key Space\n15 save still.png\n40 save later.png\n41 key Space\n45 save moved.png\n"
                                 "50 key Right\n55 save other.png\n60 key Left\n61 key r\n70 save again.png\n"
                                 "71 key s\n80 key q\n");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(picture("still.png").rgba, picture("later.png").rgba);
    EXPECT_NE(picture("still.png").rgba, picture("moved.png").rgba);
    EXPECT_NE(picture("moved.png").rgba, picture("other.png").rgba);
    EXPECT_NE(picture("other.png").rgba, picture("again.png").rgba);
    EXPECT_EQ(picture("tidalume-metaballs-1.png").width, 97);
}

TEST_F(Viewer, FollowsTheSizeOfTheWindow) {
    const Outcome outcome = play("5 resize 160x90\n60 save wide.png\n61 quit\n");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    const Picture wide = picture("wide.png");
    EXPECT_EQ(wide.width, 160);
    EXPECT_EQ(wide.height, 90);
    EXPECT_GT(std::count_if(wide.rgba.begin(), wide.rgba.end(), [](int value) { return value > 140; }), 160 * 90 + 500)
        << "besides the alpha values hardly anything is bright";
}

TEST_F(Viewer, BadInputGetsOneLineAndStatusTwo) {
    struct Row {
        const char* script;
        const char* options;
        const char* reason;
    };
    const Row rows[] = {
        {"0 dance\n", "", "script, line 1: \"dance\" is none of"},
        {"# first\n\n0 down 5\n", "", "script, line 3: two coordinates"},
        {"0 down 5 5 10\n", "", "line 1: the finger is a number from 0 to 9"},
        {"0 down 5 5 thumb\n", "", "line 1: the finger"},
        {"0 resize 5\n", "", "is not WIDTHxHEIGHT"},
        {"0 resize -5x5\n", "", "is not WIDTHxHEIGHT"},
        {"0 key Nose\n", "", "no key \"Nose\""},
        {"0 save\n", "", "something is missing"},
        {"first quit\n", "", "begins with the number of a frame"},
        {"5 key c\n4 quit\n", "", "line 2: the frames go back"},
        {"0 quit\n", "--scene volcano", "no scene \"volcano\""},
        {"0 quit\n", "--size big", "is not WIDTHxHEIGHT"},
        {"0 quit\n", "--background absent.png", "--background absent.png: there is no such file"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = play(row.script, row.options);
        EXPECT_EQ(outcome.status, 2) << row.reason << ": " << outcome.output;
        EXPECT_NE(outcome.output.find(row.reason), std::string::npos) << row.reason << ": " << outcome.output;
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
    }
    const Outcome absent = run("'" VIEWER_PROGRAM "' --script absent");
    EXPECT_EQ(absent.status, 2);
    EXPECT_EQ(absent.output, "tidalume-viewer: absent: No such file or directory\n");
    unsetenv("DISPLAY");
    const Outcome blind = play("0 quit\n");
    EXPECT_EQ(blind.status, 2) << blind.output;
    EXPECT_NE(blind.output.find("tidalume-viewer: there is no display"), std::string::npos) << blind.output;
}

} // namespace tidalume::gallery
