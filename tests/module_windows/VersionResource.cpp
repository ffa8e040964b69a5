#include "tests/module_windows/VersionResource.h"

VersionResource::VersionResource(const std::filesystem::path& file) {
    DWORD unused = 0;
    const DWORD size = GetFileVersionInfoSizeW(file.c_str(), &unused);
    block_.resize(size);
    if (size == 0 || GetFileVersionInfoW(file.c_str(), 0, size, block_.data()) == 0) {
        block_.clear();
    }
}

std::wstring VersionResource::text(const std::wstring& name) const {
    const auto* found = find<wchar_t>(L"\\StringFileInfo\\040904B0\\" + name);
    return found == nullptr ? std::wstring() : found;
}

std::wstring VersionResource::fileVersion() const {
    const auto* fixed = find<VS_FIXEDFILEINFO>(L"\\");
    if (fixed == nullptr) {
        return {};
    }
    const auto half = [](DWORD both, int shift) { return std::to_wstring((both >> shift) & 0xFFFF); };
    return half(fixed->dwFileVersionMS, 16) + L"." + half(fixed->dwFileVersionMS, 0) + L"." +
           half(fixed->dwFileVersionLS, 16) + L"." + half(fixed->dwFileVersionLS, 0);
}

DWORD VersionResource::fileType() const {
    const auto* fixed = find<VS_FIXEDFILEINFO>(L"\\");
    return fixed == nullptr ? 0 : fixed->dwFileType;
}
