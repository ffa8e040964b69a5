#include "tests/histories/InProcessModules.h"

#include "PartsCommand.h"
#include "Refusal.h"
#include "Utf8.h"
#include "Watches.h"
#include "kthost/console/CommandError.h"
#include "tests/scenario_modules/puppets/Puppets.h"

#include <KtEd.h>

#include <exception>

namespace histories {

namespace {

parts::Watches* currentWatches = nullptr;

bool runParts(KtApDocument* document, const KtArray<const wchar_t*>& words) {
    try {
        parts::runPartsCommand(*currentWatches, *document, {words.begin(), words.length()});
        return true;
    } catch (const parts::Refusal& refusal) {
        ktedFail(refusal.reason().c_str());
    } catch (const std::exception& failure) {
        ktedFail(parts::fromUtf8(failure.what()).c_str());
    }
    return false;
}

void demand(bool possible, const char* reason) {
    if (!possible) {
        throw kthost::CommandError(reason);
    }
}

} // namespace

InProcessModules::InProcessModules() = default;

InProcessModules::~InProcessModules() {
    unloadAll();
}

bool InProcessModules::run(const std::string& line) {
    if (line == "load KtDxNotify.kmx") {
        loadNotify();
    } else if (line == "unload KtDxNotify.kmx") {
        demand(application_ != nullptr, "it is not loaded");
        unloadNotify();
    } else if (line == "load PartsList.kmx") {
        loadPartsList();
    } else if (line == "unload PartsList.kmx") {
        demand(watches_ != nullptr, "it is not loaded");
        unloadPartsList();
    } else if (line == "load Puppets.kmx") {
        loadPuppets();
    } else if (line == "unload Puppets.kmx") {
        demand(puppets_, "it is not loaded");
        unloadPuppets();
    } else {
        return false;
    }
    return true;
}

void InProcessModules::unloadAll() {
    unloadPuppets();
    unloadPartsList();
    unloadNotify();
}

void InProcessModules::loadNotify() {
    demand(application_ == nullptr, "it is loaded already");
    gIdleCheckMessage = 0; // as in a module that has just been loaded
    application_ = std::make_unique<KtDxApplication>();
    twin_ = std::make_unique<ktmodel::Twin>();
}

void InProcessModules::unloadNotify() {
    application_.reset();
    twin_.reset();
}

void InProcessModules::loadPartsList() {
    demand(watches_ == nullptr, "it is loaded already");
    watches_ = std::make_unique<parts::Watches>();
    currentWatches = watches_.get();
    ktedAddCommand(parts::kCommandName, parts::kCommandUsage, &runParts);
}

void InProcessModules::unloadPartsList() {
    if (watches_ != nullptr) {
        ktedRemoveCommand(parts::kCommandName);
        watches_.reset();
        currentWatches = nullptr;
    }
}

void InProcessModules::loadPuppets() {
    demand(!puppets_, "it is loaded already");
    puppets_ = true;
    ktedAddCommand(puppets::kCommandName, puppets::kCommandUsage, &puppets::runPuppetCommand);
}

void InProcessModules::unloadPuppets() {
    if (puppets_) {
        ktedRemoveCommand(puppets::kCommandName);
        puppets::dismissPuppets();
        puppets_ = false;
    }
}

} // namespace histories
