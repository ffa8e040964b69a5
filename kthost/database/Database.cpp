#include "kthost/database/Database.h"

#include "kthost/database/Appending.h"
#include "kthost/database/BlockRepresentation.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Releasing.h"
#include "kthost/database/TraceDescriber.h"

#include <utility>

namespace kthost {

namespace {

/// What the process has once, as soon as there is a drawing.
void prepareHost() {
    static const bool prepared = [] {
        registerBlockRepresentation();
        describeIdsInTrace();
        return true;
    }();
    static_cast<void>(prepared);
}

} // namespace

Database::Database(std::wstring name, Layouts layouts)
    : contents_(std::make_unique<DatabaseContents>(*this, std::move(name))) {
    prepareHost();
    contents_->blockTable = makeObject<BlockTable>(*contents_, {});
    if (layouts == Layouts::modelAndPaperSpace) {
        contents_->modelSpace = enterRecord(*contents_, namedRecord(L"*Model_Space"), true);
        enterRecord(*contents_, namedRecord(L"*Paper_Space"), true);
    }
}

Database::~Database() {
    releaseAll(*contents_);
    ObjectStore::instance().removeDatabase(contents_->slot);
}

KtDbObjectId Database::blockTableId() const {
    return contents_->blockTable;
}

bool Database::setUndoRecording(bool on) {
    return std::exchange(contents_->recording, on);
}

bool Database::undoRecording() const {
    return contents_->recording;
}

const std::wstring& Database::name() const {
    return contents_->name;
}

void Database::setName(std::wstring name) {
    contents_->name = std::move(name);
}

KtDbObjectId Database::modelSpaceId() const {
    return contents_->modelSpace.isErased() ? KtDbObjectId() : contents_->modelSpace;
}

UndoHistory& Database::history() {
    return contents_->history;
}

std::size_t Database::releaseErased() {
    std::size_t released = 0; // what only the history kept goes with it
    if (contents_->history.discard(released) != Orbx::eOk) {
        return 0;
    }
    const std::vector<KtDbObjectId> erased(contents_->erased.begin(), contents_->erased.end());
    return released + releaseObjects(*contents_, erased, [](KtDbObjectId) { return false; });
}

Database& hostDatabase(KtDbDatabase& database) {
    return static_cast<Database&>(database);
}

} // namespace kthost
