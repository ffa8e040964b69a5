#pragma once

#include <SystemPath.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kthost::test {

/// A folder for the files of one test, removed with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("kthost-reader-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    ~TemporaryFolder() {
        std::error_code ignored; // a test's result does not hang on it
        std::filesystem::remove_all(path_, ignored);
    }

    /// Writes a file, and the folders that lead to it. Returns its path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::path path = path_ / name;
        std::filesystem::create_directories(systemPath(path.parent_path()));
        std::ofstream stream(systemPath(path), std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!stream.flush()) {
            throw std::runtime_error("cannot write " + path.string());
        }
        return path;
    }

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace kthost::test
