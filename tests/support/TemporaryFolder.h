#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A new folder that is the working directory while it lives.
class TemporaryFolder {
  public:
    TemporaryFolder() { std::filesystem::current_path(mkdtemp(mPath)); }
    ~TemporaryFolder() {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(mPath);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;

  private:
    char mPath[24] = "/tmp/tidalume-XXXXXX";
};

inline void writeFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// What a file holds; nothing where there is none.
inline std::string fileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
