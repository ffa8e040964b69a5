#include "kthost/window/windows/ImportTable.h"

#include <psapi.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace kthost {

namespace {

/// What lies that far behind the beginning of an image.
template <typename T>
T* at(HMODULE image, std::uintptr_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(image) + offset);
}

/// One for each library that an image is linked against, up to one without a name.
const IMAGE_IMPORT_DESCRIPTOR* importsOf(HMODULE image) {
    const auto* dos = at<const IMAGE_DOS_HEADER>(image, 0);
    const auto* headers = at<const IMAGE_NT_HEADERS>(image, static_cast<std::uintptr_t>(dos->e_lfanew));
    const IMAGE_DATA_DIRECTORY& directory =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    static constexpr IMAGE_IMPORT_DESCRIPTOR kNone{};
    return directory.Size == 0 ? &kNone : at<const IMAGE_IMPORT_DESCRIPTOR>(image, directory.VirtualAddress);
}

HMODULE hostLibrary() {
    HMODULE library = nullptr;
    constexpr DWORD kHow =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    static const int place = 0;
    GetModuleHandleExW(kHow, reinterpret_cast<const wchar_t*>(&place), &library);
    return library;
}

bool isLinkedAgainstHost(HMODULE image) {
    const HMODULE host = hostLibrary();
    for (const auto* library = importsOf(image); library->Name != 0; ++library) {
        if (GetModuleHandleA(at<const char>(image, library->Name)) == host) {
            return true;
        }
    }
    return false;
}

/// The place of an address in an image's table may be write-protected.
void writeAddress(IMAGE_THUNK_DATA& place, const void* address) {
    const auto value = static_cast<ULONGLONG>(reinterpret_cast<std::uintptr_t>(address));
    DWORD protection = 0;
    if (place.u1.Function != value &&
        VirtualProtect(&place, sizeof place, PAGE_READWRITE, &protection) != 0) {
        place.u1.Function = value;
        VirtualProtect(&place, sizeof place, protection, &protection);
    }
}

} // namespace

std::vector<HMODULE> imagesLinkedAgainstHost() {
    std::vector<HMODULE> images(64);
    DWORD bytes = 0;
    for (;;) {
        const auto room = static_cast<DWORD>(images.size() * sizeof(HMODULE));
        if (K32EnumProcessModules(GetCurrentProcess(), images.data(), room, &bytes) == 0) {
            return {};
        }
        if (bytes <= room) {
            break;
        }
        images.resize(bytes / sizeof(HMODULE));
    }
    images.resize(bytes / sizeof(HMODULE));
    std::erase_if(images, [](HMODULE image) { return !isLinkedAgainstHost(image); });
    return images;
}

void redirectImport(HMODULE image, std::string_view name, const void* replacement) {
    for (const auto* library = importsOf(image); library->Name != 0; ++library) {
        if (library->OriginalFirstThunk == 0) {
            continue; // names are gone once such a table is bound
        }
        const auto* named = at<const IMAGE_THUNK_DATA>(image, library->OriginalFirstThunk);
        auto* bound = at<IMAGE_THUNK_DATA>(image, library->FirstThunk);
        for (; named->u1.AddressOfData != 0; ++named, ++bound) {
            if (!IMAGE_SNAP_BY_ORDINAL(named->u1.Ordinal) &&
                at<const IMAGE_IMPORT_BY_NAME>(image, named->u1.AddressOfData)->Name == name) {
                writeAddress(*bound, replacement);
            }
        }
    }
}

} // namespace kthost
