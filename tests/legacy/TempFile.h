#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

/// A file of its own for one test, removed at its end.
class TempFile {
public:
    /// The name ends in `suffix`.
    explicit TempFile(const std::string& bytes = {}, const std::u8string& suffix = {})
        : stem_(std::filesystem::path(testing::TempDir()) /
                ("template-" + std::to_string(std::random_device()()))),
          path_(stem_) {
        path_ += std::filesystem::path(suffix);
        std::ofstream(path_, std::ios::binary) << bytes;
    }

    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// The name, where the suffix is this one in wide text.
    [[nodiscard]] std::wstring wide(const std::wstring& suffix = {}) const {
        return stem_.wstring() + suffix;
    }

private:
    std::filesystem::path stem_;
    std::filesystem::path path_;
};
