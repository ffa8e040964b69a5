#pragma once

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

/// A folder of its own for one test, removed at its end with all that is in it.
class TempFolder {
public:
    TempFolder()
        : path_(std::filesystem::path(testing::TempDir()) /
                ("ktemplate-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directory(path_);
    }

    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// A file in it that holds these bytes.
    [[nodiscard]] std::filesystem::path file(const std::string& name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return path_ / name;
    }

    [[nodiscard]] std::size_t countEntries() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::filesystem::path path_;
};

inline std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream in(systemPath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}
