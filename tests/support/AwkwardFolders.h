#pragma once

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <system_error>

/// Folders that not every program can cope with.
namespace awkward {

/// Longer than 300 characters; each name within what file systems allow.
inline std::filesystem::path longFolder() {
    std::filesystem::path folder;
    for (const char letter : {'a', 'b', 'c'}) {
        folder /= std::string(105, letter);
    }
    return folder;
}

/// Outside ASCII, outside every 8-bit code page, and outside the basic plane.
inline std::filesystem::path foreignFolder() {
    return u8"Größe Ω 回路 𝛺🔌";
}

/// Both for parametrised tests, with their names.
inline auto folders() {
    return testing::Values(longFolder(), foreignFolder());
}

inline std::string nameOfFolder(const testing::TestParamInfo<std::filesystem::path>& folder) {
    return folder.param == longFolder() ? "Long" : "Foreign";
}

/// The folder of that name below one that is there, for a test.
class Folder {
public:
    Folder(const std::filesystem::path& parent, const std::filesystem::path& name)
        : parent_(parent),
          path_(parent) {
        for (const std::filesystem::path& part : name) {
            path_ /= part;
            std::filesystem::create_directory(systemPath(path_));
        }
    }

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    /// Leaves what was in it where whoever removes the parent finds it: not everything that goes through
    /// folders can cope with this one.
    ~Folder() {
        std::error_code ignored; // a test's result does not hang on it
        for (int part = 0; path_ != parent_; ++part) {
            std::filesystem::rename(systemPath(path_), parent_ / std::to_string(part), ignored);
            path_ = path_.parent_path();
        }
    }

    /// As programs are given it.
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path parent_;
    std::filesystem::path path_;
};

} // namespace awkward
