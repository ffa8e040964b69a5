#pragma once

#include "tests/support/TempFolder.h"

#include <filesystem>
#include <string>

/// A file of its own for one test, removed at its end.
class TempFile {
public:
    /// The name ends in `suffix`.
    explicit TempFile(const std::string& bytes = {}, const std::u8string& suffix = {})
        : path_(folder_.file(u8"template" + suffix, bytes)) {}

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// The name, where the suffix is this one in wide text.
    [[nodiscard]] std::wstring wide(const std::wstring& suffix = {}) const {
        return (folder_ / "template").wstring() + suffix;
    }

private:
    TempFolder folder_;
    std::filesystem::path path_;
};
