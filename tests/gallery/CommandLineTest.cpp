#include "gallery/SceneTable.h"
#include "headless/PictureFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace tidalume::gallery {

namespace {

struct Outcome {
    int status;
    std::string output; // standard output and error
};

class CommandLine : public testing::Test {
  protected:
    CommandLine() { std::filesystem::create_directories(mFolder); }
    ~CommandLine() override { std::filesystem::remove_all(mFolder); }

    std::string path(const std::string& name) const { return (mFolder / name).string(); }

    std::string load(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        EXPECT_TRUE(file) << name;
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    // The program in the test's folder, with arguments for the shell to split.
    Outcome run(const std::string& arguments) const {
        const std::string command = "cd '" + mFolder.string() + "' && '" GALLERY_PROGRAM "' " + arguments + " 2>&1";
        std::FILE* pipe = popen(command.c_str(), "r");
        Outcome outcome = {};
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            outcome.output += buffer;
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

  private:
    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("tidalume-gallery-" + std::to_string(::getpid()));
};

} // namespace

TEST_F(CommandLine, BadInputGetsOneLineAndStatusTwo) {
    std::ofstream(path("broken.png")) << "\x89PNG\r\n\x1A\n";
    std::ofstream(path("text")) << "no picture";
    struct Row {
        const char *arguments, *argument, *reason; // the line names the argument and says the reason
    };
    const Row rows[] = {
        {"--scene volcano", "--scene", "no scene \"volcano\"; the scenes are: water"},
        {"--size 0x10", "--size 0x10", "width 0 is below 1"},
        {"--size 100000x10", "--size 100000x10", "above the driver's limit of"},
        {"--size 99999999999x10", "--size", "is not WIDTHxHEIGHT"},
        {"--frames 0", "--frames", "0 not in range"},
        {"--seed -1", "--seed", "-1"},
        {"--background absent.png", "--background absent.png", "no such file"},
        {"--background .", "--background .", "not a regular file"},
        {"--background broken.png", "--background broken.png", "broken PNG"},
        {"--background ''", "--background", "no file is named"},
        {"--out text", "--out text", ""},
        {"--out /proc/pictures", "--out /proc/pictures", ""},
        {"--volume 11", "--volume", ""},
    };
    for (const Row& row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.status, 2) << row.arguments << ": " << outcome.output;
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
        EXPECT_NE(outcome.output.find(row.argument), std::string::npos) << row.arguments << ": " << outcome.output;
        EXPECT_NE(outcome.output.find(row.reason), std::string::npos) << row.arguments << ": " << outcome.output;
    }
    EXPECT_FALSE(std::filesystem::exists(path("out"))) << "bad input leaves no folder behind";
}

TEST_F(CommandLine, SameSeedSameBytes) {
    headless::writePng(path("photo.png"), Picture(31, 17));
    const std::string options = "--size 61x97 --frames 9 --background photo.png ";
    const Outcome all = run(options + "--seed 3 --out all");
    EXPECT_EQ(all.status, 0) << all.output;
    EXPECT_NE(all.output.find("OpenGL ES 3"), std::string::npos) << all.output;
    EXPECT_EQ(run(options + "--seed 3 --out one --scene metaballs --scene metaballs").status, 0);
    EXPECT_EQ(run(options + "--seed 4 --out other --scene metaballs").status, 0);

    const std::string picture = load("all/metaballs.png");
    EXPECT_EQ(picture, load("one/metaballs.png")) << "alone as among all";
    EXPECT_EQ(load("all/metaballs.webp"), load("one/metaballs.webp"));
    EXPECT_NE(picture, load("other/metaballs.png"));
    EXPECT_EQ(headless::readPicture(path("all/metaballs.png")).height, 97);
    const std::string list = run("--list").output;
    for (const SceneEntry& entry : sceneTable()) {
        const std::string name = entry.name;
        EXPECT_NE(list.find(name + " "), std::string::npos) << list;
        EXPECT_NE(load("all/index.html").find("src=\"" + name + ".webp\""), std::string::npos) << name;
    }
}

} // namespace tidalume::gallery
