#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace tidalume::test {

/// A new folder that lives as long as this object.
class TemporaryFolder {
  public:
    /// Throws std::runtime_error where none can be made.
    TemporaryFolder() : mPath(std::filesystem::temp_directory_path() / "tidalume-XXXXXX") {
        if (!mkdtemp(mPath.data())) throw std::runtime_error("cannot make a folder like " + mPath);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return mPath; }

  private:
    std::string mPath;
};

} // namespace tidalume::test
