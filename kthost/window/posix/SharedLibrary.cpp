#include "kthost/window/SharedLibrary.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace kthost {

namespace {

struct RangeSearch {
    ElfW(Addr) loadAddress;
    const char* name;
    AddressRange range;
};

void widen(AddressRange& range, std::uintptr_t begin, std::size_t size) {
    range.begin = std::min(range.begin, begin);
    range.end = std::max(range.end, begin + size);
}

int visitLibrary(dl_phdr_info* info, std::size_t /*size*/, void* data) {
    RangeSearch& search = *static_cast<RangeSearch*>(data);
    if (info->dlpi_addr != search.loadAddress || std::string_view(info->dlpi_name) != search.name) {
        return 0;
    }
    search.range.begin = std::numeric_limits<std::uintptr_t>::max();
    for (std::size_t i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD) {
            widen(search.range, info->dlpi_addr + segment.p_vaddr, segment.p_memsz);
        }
    }
    return 1;
}

} // namespace

SharedLibrary SharedLibrary::open(const std::filesystem::path& file, std::string& error) {
    SharedLibrary library;
    // Everything is resolved now: a missing function shows when the module is loaded, not in the middle of a
    // command.
    library.handle_ = static_cast<HMODULE>(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!library) {
        error = dlerror();
    }
    return library;
}

void* SharedLibrary::symbol(const char* name) const {
    return handle_ == nullptr ? nullptr : dlsym(handle_, name);
}

AddressRange SharedLibrary::range() const {
    link_map* map = nullptr;
    if (handle_ == nullptr || dlinfo(handle_, RTLD_DI_LINKMAP, static_cast<void*>(&map)) != 0) {
        return {};
    }
    RangeSearch search{map->l_addr, map->l_name, {}};
    dl_iterate_phdr(visitLibrary, &search);
    return search.range;
}

bool SharedLibrary::close() {
    if (handle_ == nullptr || dlclose(handle_) != 0) {
        return false;
    }
    handle_ = nullptr;
    return true;
}

std::optional<CodePlace> placeOfAddress(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
        return std::nullopt;
    }
    const auto base = reinterpret_cast<std::uintptr_t>(info.dli_fbase);
    return CodePlace{std::filesystem::path(info.dli_fname).filename().string(),
                     reinterpret_cast<std::uintptr_t>(address) - base};
}

} // namespace kthost
