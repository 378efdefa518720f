#pragma once

#include "headless/PictureFile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace tidalume::gallery {

/// Runs programs in a folder of the test's own.
class ProgramTest : public testing::Test {
  protected:
    ProgramTest() { std::filesystem::create_directories(mFolder); }
    ~ProgramTest() override { std::filesystem::remove_all(mFolder); }

    std::string path(const std::string& name) const { return (mFolder / name).string(); }

    void write(const std::string& name, const std::string& text) const { std::ofstream(path(name)) << text; }

    std::string load(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        EXPECT_TRUE(file) << name;
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    Picture picture(const std::string& name) const { return headless::readPicture(path(name)); }

    /// Runs a command line of the shell and leaves its standard output and error in the file "output".
    /// @return its status
    int run(const std::string& command) const {
        const std::string line = "cd '" + mFolder.string() + "'; exec >output 2>&1; " + command;
        return WEXITSTATUS(std::system(line.c_str()));
    }

    void runsWell(const std::string& command) const { ASSERT_EQ(run(command), 0) << command << ": " << load("output"); }

    /// The command says why it does nothing, in one line, and ends with status 2.
    void isRefused(const std::string& command, const std::string& reason) const {
        EXPECT_EQ(run(command), 2) << command;
        EXPECT_THAT(load("output"), testing::HasSubstr(reason)) << command;
        EXPECT_EQ(load("output").find('\n') + 1, load("output").size()) << "one line: " << load("output");
    }

  private:
    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("tidalume-program-" + std::to_string(::getpid()));
};

} // namespace tidalume::gallery
