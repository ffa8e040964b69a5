#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ReleasedIds.h"

#include <KtRxClass.h>

#include <sstream>

namespace kthost {

namespace {

/// One object's line, piece by piece.
class Line {
public:
    explicit Line(std::wostringstream& out) : out_(out) {}

    void operator()(const AttributeState& state) { out_ << L" text=" << state.text; }

    void operator()(const ReferenceState& state) { position(state.position); }

    void operator()(const TableState& state) {
        position(state.position);
        out_ << L" size=" << state.rows << L'x' << state.columns;
        for (const std::wstring& cell : state.cells) {
            out_ << L'[' << cell << L']';
        }
    }

    void operator()(const RecordState& state) {
        out_ << L" name=" << state.name << L" represents=" << state.represents.asUnsigned() << L':'
             << state.label << L" mirrors=" << state.mirrors.asUnsigned() << L" drawing="
             << static_cast<const void*>(state.drawing.get()) << (state.dependent ? L" dependent" : L"");
    }

private:
    void position(const KtGePoint3d& point) {
        out_ << L" at=" << point.x << L',' << point.y << L',' << point.z;
    }

    std::wostringstream& out_;
};

void list(std::wostringstream& out, const wchar_t* label, const std::vector<KtDbObjectId>& ids) {
    out << label;
    for (const KtDbObjectId id : ids) {
        out << L' ' << id.asUnsigned();
    }
}

bool isUnappended(KtDbObjectId id) {
    return ObjectStore::instance().find(id)->unappended;
}

void dumpRecord(std::wostringstream& out, const BlockTableRecord& record) {
    list(out, L" living:", record.references().living());
    std::vector<KtDbObjectId> erased = record.references().erased();
    std::erase_if(erased, isUnappended);
    list(out, L" erased:", erased);
    list(out, L" entities:", referencesIn(record.objectId()));
    out << L" contains:" << record.contains().size() << L" placed:" << record.placedIn().size();
}

void dumpXData(std::wostringstream& out, const DatabaseContents& contents, KtDbObjectId id) {
    const auto data = contents.xdata.find(id);
    if (data == contents.xdata.end()) {
        return;
    }
    for (const XData::Application& application : data->second.applications) {
        out << L" xdata " << application.name << L':';
        for (const XDataValue& value : application.values) {
            out << L'[' << value.kind << L' ' << value.integer << L' ' << value.text << L']';
        }
    }
}

void dumpObject(std::wostringstream& out, const DatabaseContents& contents, KtDbObjectId id,
                ObjectHead& head) {
    out << id.asUnsigned() << L' ' << classOf(head.kind)->name() << L" of " << head.owner.asUnsigned()
        << (head.unappended ? L" unappended"
            : head.erased   ? L" erased"
                            : L"");
    if (const std::optional<ObjectState> state = stateOf(head)) {
        std::visit(Line(out), *state);
    }
    if (const auto* record = peek<BlockTableRecord>(id)) {
        dumpRecord(out, *record);
    }
    dumpXData(out, contents, id);
    out << L'\n';
}

} // namespace

std::wstring dumpDatabase(const Database& database) {
    const ObjectStore& store = ObjectStore::instance();
    const DatabaseContents& contents = database.contents();
    std::wostringstream out;
    for (std::uint64_t handle = 1; handle <= store.lastHandle(contents.slot); ++handle) {
        const KtDbObjectId id = store.byHandle(contents.slot, handle);
        if (!isReleased(id) && !isUnappended(id)) {
            dumpObject(out, contents, id, *store.find(id));
        }
    }
    return out.str();
}

} // namespace kthost
