#include "tests/scenario_modules/puppets/Puppets.h"

#include <WatcherExport.h>

#include <KtEd.h>
#include <KtRxModule.h>

#include <cstdint>

extern "C" {

WATCHER_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* /*applicationId*/) {
    if (message == KtRx::kInitialise) {
        ktedAddCommand(puppets::kCommandName, puppets::kCommandUsage, &puppets::runPuppetCommand);
    } else if (message == KtRx::kUnload) {
        ktedRemoveCommand(puppets::kCommandName);
        puppets::dismissPuppets();
    }
    return KtRx::kDone;
}

WATCHER_EXPORT std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {
    return KtRx::kApiVersion;
}

} // extern "C"
