#include "PartsList.h"

#include "Csv.h"
#include "DrawingIds.h"
#include "Refusal.h"
#include "ReplaceFile.h"
#include "Utf8.h"

#include <ktdx/KtDxNotify.h>

#include <KtApDocument.h>
#include <KtEd.h>
#include <SystemPath.h>

#include <algorithm>
#include <fstream>
#include <ios>
#include <iterator>
#include <utility>

namespace parts {

namespace {

std::wstring describe(const TableDiff& diff) {
    return std::to_wstring(diff.added) + L" added, " + std::to_wstring(diff.changed) + L" changed, " +
           std::to_wstring(diff.removed) + L" removed";
}

KtArray<KtDbObjectId> toArray(const std::vector<KtDbObjectId>& ids) {
    KtArray<KtDbObjectId> array(ids.size());
    for (const KtDbObjectId id : ids) {
        array.append(id);
    }
    return array;
}

std::string readAll(const std::filesystem::path& file) {
    std::ifstream stream(systemPath(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

PartsList::PartsList(KtApDocument& document, DocumentTimer& timer, const Options& options)
    : document_(document),
      timer_(timer),
      options_(options),
      source_(*document.database(), options),
      table_(extract()),
      changedSlot_([this] { blocksChanged(); }),
      idleSlot_([this] { idle(); }) {
    if (options_.table) {
        drawn_.emplace(document_, *options_.table, table_);
    }
    try {
        attach();
        listen();
        timer_.attach(idleSlot_.function(), 0);
        writeFile();
    } catch (...) {
        stop();
        throw;
    }
    for (const std::wstring& block : source_.absent()) {
        print(L"the drawing has no block '" + block + L"'");
    }
    print(std::to_wstring(table_.rows.size()) + L" rows, " + describe(compareTables({}, table_)));
}

void PartsList::stop() {
    ktdxBlockReferenceMonitorDetach(&document_, changedSlot_.function());
    timer_.detach(idleSlot_.function());
}

void PartsList::stopWithDocument() {
    ktdxBlockReferenceMonitorDetach(&document_, changedSlot_.function());
}

void PartsList::attach() {
    reader_.forgetAll();
    const KtDbDatabase& database = *document_.database();
    knownRecords_ = listRecords(database);
    // A representation that is older than its definition is watched by itself, so each is named.
    std::vector<KtDbObjectId> watched = withRepresentations(source_.definitions(database));
    if (drawn_) {
        watched.push_back(drawn_->record()); // undo can bring cells of long ago back
    }
    const KtArray<KtDbObjectId> ids = toArray(watched);
    if (!ids.isEmpty() && !ktdxBlockReferenceMonitorAttach(&document_, &ids, changedSlot_.function())) {
        throw Refusal(L"the drawing cannot be watched; is KtDxNotify loaded?");
    }
}

/// Every record, as what is placed in it may be of interest, and the references that are listed or could be.
void PartsList::listen() {
    std::vector<KtDbObjectId> objects = knownRecords_;
    const std::vector<KtDbObjectId> references =
        listReferences(withRepresentations(source_.definitions(*document_.database())));
    objects.insert(objects.end(), references.begin(), references.end());
    if (drawn_) {
        objects.push_back(drawn_->id());
    }
    listener_.listenTo(std::move(objects));
    if (drawn_) {
        for (const KtDbObjectId id : listener_.touched()) {
            reader_.forget(id); // others may have joined in the drawing
        }
    }
    listener_.forget();
}

Selection PartsList::selection() const {
    return {.definitions = source_.definitions(*document_.database()),
            .kind = options_.kind,
            .conditions = options_.conditions,
            .tags = source_.tags(),
            .ownTable = drawn_ ? drawn_->id() : KtDbObjectId()};
}

PartsTable PartsList::extract() {
    return extractParts(*document_.database(), selection(), reader_);
}

/// Where references are all that has been touched, the others are as they were read. Anything else may
/// concern all of them, and so may what KtDxNotify alone has heard, or nobody.
void PartsList::forgetTouched() {
    const auto& touched = listener_.touched();
    const bool areReferences =
        std::exchange(isReadHeard_, false) && listener_.isComplete() && !touched.empty() &&
        std::all_of(touched.begin(), touched.end(), [&](KtDbObjectId id) { return reader_.forget(id); });
    if (!areReferences) {
        reader_.forgetAll();
    }
}

void PartsList::refresh(bool always) {
    forgetTouched();
    PartsTable fresh = extract();
    const bool hasWaited = std::exchange(unread_, std::nullopt).has_value();
    if (always || hasWaited || fresh != table_) {
        take(std::move(fresh));
    } else if (drawn_ && drawn_->isThere()) {
        drawOrReport(); // undo may have brought cells of long ago back
    }
    listen(); // behind the drawing of the table, which touches it
    isReadHeard_ = true;
}

void PartsList::take(PartsTable fresh) {
    const TableDiff diff = compareTables(table_, fresh);
    table_ = std::move(fresh);
    print(std::to_wstring(diff.rows) + L" rows, " + describe(diff));
    publish();
}

void PartsList::publish() {
    drawOrReport();
    writeFile();
}

/// A table that cannot be drawn is no reason to keep the file waiting.
void PartsList::drawOrReport() {
    try {
        drawTable();
        undrawn_.reset();
    } catch (const InUse& obstacle) {
        waitFor(obstacle, undrawn_);
    } catch (const Refusal& refusal) {
        print(refusal.reason());
    }
}

void PartsList::writeFile() const {
    if (options_.file.empty()) {
        return;
    }
    const std::error_code failure = replaceFile(toPath(options_.file), toCsv(table_));
    if (failure) {
        throw Refusal(L"'" + options_.file + L"' cannot be written: " + fromUtf8(failure.message()));
    }
}

void PartsList::drawTable() {
    if (!drawn_) {
        return;
    }
    if (drawn_->isThere()) {
        toldOfLoss_ = false;
        drawn_->update(table_);
    } else if (!std::exchange(toldOfLoss_, true)) {
        print(L"the table in the drawing is erased and not drawn any more until it is restored");
    }
}

void PartsList::check() const {
    const TableDiff diff = compareTables(table_, extractParts(*document_.database(), selection()));
    if (!diff.isEmpty()) {
        throw Refusal(L"the list differs from the drawing: " + describe(diff));
    }
    checkFile();
    if (drawn_ && drawn_->isThere() && !drawn_->shows(table_)) {
        throw Refusal(L"the table in the drawing differs from the list");
    }
    print(std::to_wstring(table_.rows.size()) + L" rows agree with the drawing");
}

void PartsList::checkFile() const {
    if (!options_.file.empty() && readAll(toPath(options_.file)) != toCsv(table_)) {
        throw Refusal(L"'" + options_.file + L"' differs from the list");
    }
}

bool PartsList::hasOtherDefinitions() const {
    return !hasRecords(*document_.database(), knownRecords_);
}

void PartsList::blocksChanged() {
    try {
        if (hasOtherDefinitions()) {
            attach();
        }
        refresh(true);
    } catch (const InUse& obstacle) {
        waitFor(obstacle, unread_);
    }
}

void PartsList::idle() {
    if (unread_ && !unread_->isOver()) {
        return; // nothing can be read before that
    }
    try {
        follow();
    } catch (const InUse& obstacle) {
        waitFor(obstacle, unread_);
    }
}

void PartsList::follow() {
    const bool hasWaited = unread_ || (undrawn_ && undrawn_->isOver());
    const bool isDue = hasWaited || listener_.isTouched();
    if (!isDue && !hasOtherDefinitions()) {
        return;
    }
    // Only what KtDxNotify has seen can be attached to, and what it has not heard, or could not read either,
    // it has to be made to look for. If its own check came first and called, neither is left to do; otherwise
    // it looks now, and tells of everything that there is to tell.
    ktdxUpdateBlockGraph(&document_, isDue, true);
    if (hasWaited || listener_.isTouched() || hasOtherDefinitions()) {
        attach();
        refresh(false);
    }
}

/// The same obstacle is told of once.
void PartsList::waitFor(const InUse& obstacle, std::optional<InUse>& place) const {
    if (!place || place->object() != obstacle.object()) {
        print(obstacle.reason() + L"; until then it stays as it was");
    }
    place = obstacle;
}

void PartsList::print(const std::wstring& text) const {
    ktedPrint((L"parts " + std::wstring(document_.name()) + L": " + text).c_str());
}

} // namespace parts
