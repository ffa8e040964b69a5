#include "PartsCommand.h"
#include "Refusal.h"
#include "Utf8.h"
#include "Watches.h"

#include <PartsListExport.h>

#include <KtEd.h>
#include <KtRxModule.h>

#include <cstdint>
#include <exception>
#include <memory>

namespace {

/// Lives from initialise to unload.
std::unique_ptr<parts::Watches>& watches() {
    static std::unique_ptr<parts::Watches> all;
    return all;
}

bool runCommand(KtApDocument* document, const KtArray<const wchar_t*>& words) {
    try {
        parts::runPartsCommand(*watches(), *document, {words.begin(), words.length()});
        return true;
    } catch (const parts::Refusal& refusal) {
        ktedFail(refusal.reason().c_str());
    } catch (const std::exception& failure) {
        ktedFail(parts::fromUtf8(failure.what()).c_str());
    }
    return false;
}

std::int32_t initialise(void* applicationId) {
    if (!ktedAddCommand(parts::kCommandName, parts::kCommandUsage, &runCommand)) {
        return KtRx::kError;
    }
    ktrxRegisterAppMDIAware(applicationId);
    watches() = std::make_unique<parts::Watches>();
    return KtRx::kDone;
}

std::int32_t unload() {
    ktedRemoveCommand(parts::kCommandName);
    watches().reset();
    return KtRx::kDone;
}

} // namespace

extern "C" {

PARTSLIST_EXPORT std::int32_t ktrxEntryPoint(std::uint32_t message, void* applicationId) {
    switch (message) {
    case KtRx::kInitialise:
        return initialise(applicationId);
    case KtRx::kUnload:
        return unload();
    default:
        return KtRx::kDone;
    }
}

PARTSLIST_EXPORT std::uint32_t ktrxGetApiVersion(std::uint32_t /*hostVersion*/) {
    return KtRx::kApiVersion;
}

} // extern "C"
