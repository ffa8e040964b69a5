#include "kthost/documents/HostLeftovers.h"

#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/documents/CommandRegistry.h"
#include "kthost/documents/DocumentManager.h"
#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/CodeOrigin.h"
#include "kthost/runtime/SystemRegistry.h"
#include "kthost/runtime/Utf8.h"
#include "kthost/window/MessageLoop.h"

#include <sstream>
#include <string>

namespace kthost {

namespace {

const char* textOf(KtDb::OpenMode mode) {
    switch (mode) {
    case KtDb::kForRead:
        return "reading";
    case KtDb::kForWrite:
        return "writing";
    case KtDb::kForNotify:
        break;
    }
    return "notify";
}

// Such as "KtDbBlockTableRecord 2A R_0603".
template <typename Found>
std::string objectText(const Found& found) {
    const std::wstring_view name = recordName(found.id);
    std::ostringstream text;
    text << toUtf8(found.className) << ' ' << std::hex << std::uppercase << found.handle;
    text << (name.empty() ? "" : " ") << toUtf8(name);
    return text.str();
}

Leftover leftoverOf(const OpenObject& open) {
    Leftover leftover;
    leftover.text = "left open for " + std::string(textOf(open.mode)) + ": " + objectText(open);
    leftover.always = true;
    return leftover;
}

Leftover leftoverOf(const AttachedReactor& attached) {
    return {"reactor left on " + objectText(attached), attached.code, {}, false};
}

void addEntries(const Dictionary& dictionary, const char* what, std::vector<Leftover>& leftovers) {
    for (const auto& [key, entry] : dictionary.entries()) {
        if (key != kServiceDictionaryKey) {
            leftovers.push_back({what + toUtf8(key), entry.code, entry.broughtBy, false});
        }
    }
}

/// An attached drawing goes with the document that it is attached to.
bool isInOpenDocument(const DocumentManager& documents, KtDbObjectId id) {
    KtDbDatabase* const owner = id.database();
    const Database* database = owner == nullptr ? nullptr : &hostDatabase(*owner);
    while (database != nullptr && documents.documentOf(database) == nullptr) {
        database = attachedTo(*database);
    }
    return database != nullptr;
}

} // namespace

void addOpenObjects(std::vector<Leftover>& leftovers) {
    for (const OpenObject& open : openObjects()) {
        leftovers.push_back(leftoverOf(open));
    }
}

void addObjectReactors(std::vector<Leftover>& leftovers) {
    for (const AttachedReactor& attached : attachedReactors()) {
        leftovers.push_back(leftoverOf(attached));
    }
}

void addOpenObjectsWithoutDocument(const DocumentManager& documents, std::vector<Leftover>& leftovers) {
    for (const OpenObject& open : openObjects()) {
        if (!isInOpenDocument(documents, open.id)) {
            leftovers.push_back(leftoverOf(open));
        }
    }
}

void addObjectReactorsWithoutDocument(const DocumentManager& documents, std::vector<Leftover>& leftovers) {
    for (const AttachedReactor& attached : attachedReactors()) {
        if (!isInOpenDocument(documents, attached.id)) {
            leftovers.push_back(leftoverOf(attached));
        }
    }
}

void addManagerReactors(const DocumentManager& documents, std::vector<Leftover>& leftovers) {
    documents.reactors().inspect([&leftovers](const KtApDocManagerReactor*, const CodeOrigin& origin) {
        leftovers.push_back(
            {"reactor left on the document manager: " + origin.className, origin.code, {}, false});
    });
}

void addFilters(const MessageLoop& loop, std::vector<Leftover>& leftovers) {
    loop.filters().inspect([&leftovers](KtEdMessageFilter, const CodeOrigin& origin) {
        leftovers.push_back({"message filter left registered", origin.code, {}, false});
    });
}

void addCommands(const CommandRegistry& commands, std::vector<Leftover>& leftovers) {
    for (const auto& [name, command] : commands.commands()) {
        leftovers.push_back(
            {"command left registered: " + toUtf8(name), addressOfFunction(command.function), {}, false});
    }
}

void addRegistryEntries(SystemRegistry& registry, std::vector<Leftover>& leftovers) {
    addEntries(registry.root(), "left in the system registry: ", leftovers);
    if (const Dictionary* services = registry.services()) {
        addEntries(*services, "service left registered: ", leftovers);
    }
}

void addCallbacks(const CallbackLedger& callbacks, std::vector<Leftover>& leftovers) {
    callbacks.inspect([&leftovers](const KtApDocument* document, KtRxCallback callback) {
        const std::string of = document == nullptr ? "" : " for " + toUtf8(document->name());
        leftovers.push_back({"callback left attached" + of, addressOfFunction(callback), {}, false});
    });
}

} // namespace kthost
