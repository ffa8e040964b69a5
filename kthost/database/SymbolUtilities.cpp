#include <KtDbSymbolUtilities.h>

#include "kthost/database/Database.h"

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): nobody derives from it or deletes it
class HostServices final : public KtDbSymbolUtilities::Services {
public:
    KtDbObjectId blockModelSpaceId(const KtDbDatabase* database) const override {
        return database == nullptr ? KtDbObjectId()
                                   : static_cast<const kthost::Database*>(database)->modelSpaceId();
    }
};

} // namespace

const KtDbSymbolUtilities::Services* KtDbSymbolUtilities::servicesPtr() {
    static const HostServices services;
    return &services;
}
