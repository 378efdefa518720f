#pragma once

#include "headless/PictureFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace tidalume::gallery {

struct Outcome {
    int status;
    std::string output; // standard output and error
};

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

    /// A command line, for the shell.
    Outcome run(const std::string& command) const {
        std::FILE* pipe = popen(("cd '" + mFolder.string() + "' && exec 2>&1 && " + command).c_str(), "r");
        Outcome outcome = {};
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            outcome.output += buffer;
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

    void runsWell(const std::string& command) const {
        const Outcome outcome = run(command);
        ASSERT_EQ(outcome.status, 0) << command << ": " << outcome.output;
    }

    /// The command says why it does nothing, in one line, and ends with status 2.
    void isRefused(const std::string& command, const std::string& reason) const {
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.status, 2) << command;
        EXPECT_THAT(outcome.output, testing::HasSubstr(reason)) << command;
        EXPECT_EQ(outcome.output.find('\n') + 1, outcome.output.size()) << "one line: " << outcome.output;
    }

  private:
    std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) / ("tidalume-program-" + std::to_string(::getpid()));
};

} // namespace tidalume::gallery
