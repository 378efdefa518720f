#pragma once

#include "testing/TemporaryFolder.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

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

/// The files that are open, but those of the driver's cache, which a thread of its own writes.
inline std::vector<std::string> openFiles() {
    std::vector<std::string> files;
    for (const auto& number : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closed; // meanwhile
        const std::string file = std::filesystem::read_symlink(number, closed);
        if (!closed && file.find("mesa_shader_cache") == std::string::npos) files.push_back(file);
    }
    return files;
}
