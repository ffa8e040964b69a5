// Stands where the tests of the template reader expect the exported function, and passes every call on to the
// export of the module that the host has loaded.

#include "kthost/documents/Host.h"

#include <ktdx/KtDxNotify.h>

#include <filesystem>
#include <stdexcept>

namespace {

using Reader = decltype(&ktdxReadLegacyBlkTemplate);

class LoadedModuleReader {
public:
    LoadedModuleReader() {
        if (!host_.modules().load(std::filesystem::path(KTDX_BINARIES) / KTDX_LOADED_MODULE)) {
            throw std::runtime_error(KTDX_LOADED_MODULE " could not be loaded");
        }
        reader_ = reinterpret_cast<Reader>(
            host_.modules().exportOf(KTDX_LOADED_MODULE, "ktdxReadLegacyBlkTemplate"));
    }

    Reader reader() const { return reader_; }

private:
    kthost::Host host_;
    Reader reader_ = nullptr;
};

Reader loadedReader() {
    static const LoadedModuleReader loaded;
    return loaded.reader();
}

// Before the first test, as some count what is allocated from their beginning to their end.
const Reader readerFromStart = loadedReader();

} // namespace

void ktdxReadLegacyBlkTemplate(const wchar_t* templatePath, KtDxStringList* blockNames,
                               KtDxStringList* attributeTags) {
    readerFromStart(templatePath, blockNames, attributeTags);
}
