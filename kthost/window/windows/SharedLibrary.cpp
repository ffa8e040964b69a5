#include "kthost/window/SharedLibrary.h"

#include <SystemPath.h>

#include "kthost/runtime/Utf8.h"
#include "kthost/window/WindowCalls.h"
#include "kthost/window/windows/SystemMessage.h"

namespace kthost {

namespace {

std::filesystem::path fileOf(HMODULE library) {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(library, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size()) {
            name.resize(length);
            return name;
        }
        name.resize(2 * name.size());
    }
}

AddressRange rangeOf(HMODULE library) {
    // A library's handle is where it begins in memory, and there lie its headers.
    const auto begin = reinterpret_cast<std::uintptr_t>(library);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(begin);
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + static_cast<std::uintptr_t>(dos->e_lfanew));
    return {begin, begin + headers->OptionalHeader.SizeOfImage};
}

} // namespace

SharedLibrary SharedLibrary::open(const std::filesystem::path& file, std::string& error) {
    SharedLibrary library;
    // What the library itself needs is looked for beside it.
    library.handle_ = LoadLibraryExW(systemPath(file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library) {
        answerInNewLibraries();
    } else {
        error = systemMessage(GetLastError());
    }
    return library;
}

void* SharedLibrary::symbol(const char* name) const {
    return handle_ == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(handle_, name));
}

AddressRange SharedLibrary::range() const {
    return handle_ == nullptr ? AddressRange() : rangeOf(handle_);
}

bool SharedLibrary::close() {
    if (handle_ == nullptr || FreeLibrary(handle_) == 0) {
        return false;
    }
    handle_ = nullptr;
    return true;
}

std::optional<CodePlace> placeOfAddress(const void* address) {
    HMODULE library = nullptr;
    constexpr DWORD kHow =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(kHow, static_cast<const wchar_t*>(address), &library) == 0) {
        return std::nullopt;
    }
    return CodePlace{toUtf8(fileOf(library).filename().wstring()),
                     reinterpret_cast<std::uintptr_t>(address) - rangeOf(library).begin};
}

} // namespace kthost
