#include "kthost/runtime/CodeText.h"

#include "kthost/runtime/ModuleLoader.h"
#include "kthost/window/SharedLibrary.h"

#include <cstdint>
#include <sstream>

namespace kthost {

std::string codeText(const void* address) {
    const ModuleLoader* modules = ModuleLoader::current();
    const std::string* unloaded = modules == nullptr ? nullptr : modules->unloadedModuleAt(address);
    std::ostringstream text;
    if (const auto place = placeOfAddress(address)) {
        text << place->library << "+0x" << std::hex << place->offset;
    } else if (unloaded != nullptr) {
        text << *unloaded;
    } else {
        text << "0x" << std::hex << reinterpret_cast<std::uintptr_t>(address);
    }
    text << (unloaded != nullptr ? " (unloaded)" : "");
    return text.str();
}

} // namespace kthost
