#include <ExclusiveFile.h>
#include <SystemPath.h>
#include <WindowSystem.h>

#include <algorithm>
#include <new>

namespace {

HANDLE asHandle(std::intptr_t handle) noexcept {
    return reinterpret_cast<HANDLE>(handle);
}

std::error_code lastError() noexcept {
    const DWORD code = GetLastError();
    if (code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION) {
        return std::make_error_code(std::errc::text_file_busy);
    }
    return {static_cast<int>(code), std::system_category()};
}

} // namespace

ExclusiveFile::~ExclusiveFile() {
    if (handle_ != -1) {
        CloseHandle(asHandle(handle_));
    }
}

std::error_code ExclusiveFile::open(const std::filesystem::path& path) noexcept try {
    const std::filesystem::path name = systemPath(path);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    const HANDLE file =
        CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    handle_ = reinterpret_cast<std::intptr_t>(file);
    if (file == INVALID_HANDLE_VALUE) {
        return lastError();
    }
    LARGE_INTEGER size{};
    if (GetFileType(file) != FILE_TYPE_DISK || GetFileSizeEx(file, &size) == 0) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    size_ = static_cast<std::uint64_t>(size.QuadPart);
    return {};

} catch (const std::bad_alloc&) {

    return std::make_error_code(std::errc::not_enough_memory);
}

std::error_code ExclusiveFile::read(void* to, std::size_t length, std::size_t& got) noexcept {
    constexpr std::size_t kMost = 0x7FFFF000;
    DWORD count = 0;
    const BOOL done =
        ReadFile(asHandle(handle_), to, static_cast<DWORD>(std::min(length, kMost)), &count, nullptr);
    got = count;
    return done != 0 ? std::error_code() : lastError();
}
