#include "tests/module_windows/ImportedFunction.h"

namespace {

template <typename T>
const T* at(HMODULE library, std::uintptr_t offset) {
    return reinterpret_cast<const T*>(reinterpret_cast<const char*>(library) + offset);
}

std::uintptr_t importedFrom(HMODULE library, const IMAGE_IMPORT_DESCRIPTOR& imports,
                            const std::string& name) {
    const auto* named = at<IMAGE_THUNK_DATA>(library, imports.OriginalFirstThunk);
    const auto* bound = at<IMAGE_THUNK_DATA>(library, imports.FirstThunk);
    for (; named->u1.AddressOfData != 0; ++named, ++bound) {
        if (at<IMAGE_IMPORT_BY_NAME>(library, named->u1.AddressOfData)->Name == name) {
            return std::uintptr_t{bound->u1.Function};
        }
    }
    return 0;
}

} // namespace

std::uintptr_t importedFunction(HMODULE library, const std::string& name) {
    const auto headersAt = static_cast<std::uintptr_t>(at<IMAGE_DOS_HEADER>(library, 0)->e_lfanew);
    const auto& directories = at<IMAGE_NT_HEADERS>(library, headersAt)->OptionalHeader.DataDirectory;
    const auto* imports =
        at<IMAGE_IMPORT_DESCRIPTOR>(library, directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    for (; imports->Name != 0; ++imports) {
        if (const std::uintptr_t found = importedFrom(library, *imports, name); found != 0) {
            return found;
        }
    }
    return 0;
}

std::uintptr_t systemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<std::uintptr_t>(GetProcAddress(GetModuleHandleW(library), name));
}
