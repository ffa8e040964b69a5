#pragma once

#include <WindowSystem.h>

#include <filesystem>
#include <string>
#include <vector>

/// The version resource of a file, as the system reads it.
class VersionResource {
public:
    explicit VersionResource(const std::filesystem::path& file);

    [[nodiscard]] bool isThere() const { return !block_.empty(); }

    /// Empty when there is none of that name.
    [[nodiscard]] std::wstring text(const std::wstring& name) const;
    /// Four numbers, with dots; empty when there are none.
    [[nodiscard]] std::wstring fileVersion() const;
    /// VFT_DLL or VFT_APP; 0 when there is none.
    [[nodiscard]] DWORD fileType() const;

private:
    template <typename T>
    const T* find(const std::wstring& path) const {
        void* found = nullptr;
        UINT length = 0;
        const bool isThere =
            !block_.empty() && VerQueryValueW(block_.data(), path.c_str(), &found, &length) != 0;
        return isThere && length > 0 ? static_cast<const T*>(found) : nullptr;
    }

    std::vector<char> block_;
};
