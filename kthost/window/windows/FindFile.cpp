#include "kthost/window/FindFile.h"

#include <SystemPath.h>
#include <WindowSystem.h>

#include <memory>
#include <string>
#include <type_traits>

namespace kthost {

namespace fs = std::filesystem;

namespace {

struct Close {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, Close>;

/// To ask about a file, and in nobody's way.
Handle openToAsk(const fs::path& path) {
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle = CreateFileW(systemPath(path).c_str(), FILE_READ_ATTRIBUTES, kShared, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr); // folders, too
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// In the spelling that the folder has it in. Empty when the system does not tell, as for some that are far
/// away.
std::wstring nameOf(HANDLE file) {
    std::wstring name;
    DWORD length = MAX_PATH;
    while (length > name.size()) {
        name.resize(length);
        length = GetFinalPathNameByHandleW(file, name.data(), length, FILE_NAME_NORMALIZED);
    }
    name.resize(length);
    return name;
}

/// The system knows files that must not be written, and tells nothing else apart.
fs::perms permissionsOf(DWORD attributes) {
    constexpr fs::perms kWriting = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? fs::perms::all & ~kWriting : fs::perms::all;
}

} // namespace

std::optional<FoundFile> findFile(const fs::path& path) {
    const Handle file = openToAsk(path);
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK ||
        GetFileInformationByHandle(file.get(), &facts) == 0) {
        return std::nullopt;
    }
    FoundFile found{.name = nameOf(file.get())};
    if (found.name.empty()) {
        found.name = systemPath(fs::absolute(path).lexically_normal());
    }
    found.isRegular = (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    found.size = (static_cast<std::uint64_t>(facts.nFileSizeHigh) << 32U) | facts.nFileSizeLow;
    found.permissions = permissionsOf(facts.dwFileAttributes);
    return found;
}

} // namespace kthost
