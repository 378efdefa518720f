#pragma once

#include "testing/TemporaryFolder.h"

#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

/// A new folder that is the working directory while it lives; afterwards that is the root.
struct WorkingFolder : tidalume::test::TemporaryFolder {
    WorkingFolder() { std::filesystem::current_path(path()); }
    ~WorkingFolder() { std::filesystem::current_path("/"); }
};

inline void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// What a file holds; nothing where there is none.
inline std::string fileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The number that the next file to be opened gets: the same as before where nothing was left open since.
inline int nextFileNumber() {
    const int number = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(number);
    return number;
}
