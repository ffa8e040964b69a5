#include "tests/histories/Drawn.h"

#include "kthost/console/ObjectNames.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

#include <KtDbBlockTableRecord.h>

#include <algorithm>

namespace histories {

namespace {

using kthost::recordName;

constexpr const char* kNobody = "NOBODY";
constexpr int kTries = 40;

bool isNamed(KtDbObjectId id) {
    const std::wstring_view name = recordName(id);
    return name.find_first_of(L"*|") == std::wstring_view::npos;
}

bool isAnonymous(KtDbObjectId id) {
    return recordName(id).starts_with(L'*');
}

bool standsForDrawing(KtDbObjectId id) {
    KtDbBlockTableRecord* record = nullptr;
    if (!isNamed(id) || ktdbOpenObject(record, id, KtDb::kForRead) != Orbx::eOk) {
        return false;
    }
    const bool stands = record->isFromExternalReference();
    static_cast<void>(record->close());
    return stands;
}

} // namespace

std::string inQuotes(std::string_view word) {
    std::string text = "\"";
    for (const char byte : word) {
        text.append(byte == '"' ? 2 : 1, byte);
    }
    return text + "\"";
}

bool Drawn::hasDrawing() const {
    const kthost::Document* document = session_.host().documents().currentDocument();
    return document != nullptr && document->database() != nullptr;
}

/// Tried at random: a list of all would cost a large drawing dear.
std::string Drawn::handleOf(bool erased) {
    kthost::Database& drawing = session_.drawing();
    const std::uint64_t last = kthost::ObjectStore::instance().lastHandle(drawing.contents().slot);
    for (int tries = 0; tries < kTries; ++tries) {
        const std::uint64_t handle = 1 + random_() % std::max<std::uint64_t>(last, 1);
        const KtDbObjectId id = kthost::objectByHandle(drawing, handle);
        if (!kthost::definitionOf(id).isNull() && id.isErased() == erased) {
            return kthost::handleText(handle);
        }
    }
    return kNobody;
}

std::string Drawn::tagOf(const std::string& handle) {
    const auto number = kthost::parseHandle(kthost::toWide(handle));
    const KtDbObjectId id = number ? kthost::objectByHandle(session_.drawing(), *number) : KtDbObjectId();
    const std::vector<kthost::AttributeView> attributes = kthost::attributesOf(id);
    return attributes.empty() || oneIn(8) ? "Note" : inQuotes(kthost::toUtf8(oneOf(attributes).tag));
}

std::string Drawn::recordOf(Wanted wanted) {
    std::vector<KtDbObjectId> found = kthost::records(session_.drawing(), false);
    std::erase_if(found, [wanted](KtDbObjectId id) { return !wanted(id); });
    return found.empty() ? kNobody : inQuotes(kthost::toUtf8(recordName(oneOf(found))));
}

std::string Drawn::block() {
    return recordOf([](KtDbObjectId) { return true; });
}

std::string Drawn::namedBlock() {
    return recordOf(&isNamed);
}

std::string Drawn::idleBlock() {
    return recordOf([](KtDbObjectId id) { return kthost::referencesTo(id).empty(); });
}

std::string Drawn::anonymousBlock() {
    return recordOf(&isAnonymous);
}

std::string Drawn::dynamicBlock() {
    return recordOf(&kthost::isDynamic);
}

std::string Drawn::container() {
    if (oneIn(2)) {
        return block();
    }
    return inQuotes(kthost::toUtf8(recordName(oneOf(kthost::records(session_.drawing(), true)))));
}

std::string Drawn::attachedDrawing() {
    return recordOf(&standsForDrawing);
}

std::string Drawn::document() {
    const std::vector<kthost::Document*>& all = session_.host().documents().documents();
    return all.empty() ? kNobody : inQuotes(kthost::toUtf8(oneOf(all)->name()));
}

std::string Drawn::position() {
    return std::to_string(number(300)) + "," + std::to_string(number(200));
}

std::string Drawn::text() {
    return (oneIn(2) ? "X" : "v") + std::to_string(number(99));
}

} // namespace histories
