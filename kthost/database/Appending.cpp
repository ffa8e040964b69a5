#include "kthost/database/Appending.h"

#include "kthost/database/Changes.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

RecordState namedRecord(std::wstring_view name) {
    RecordState state;
    state.name = name;
    return state;
}

KtDbObjectId enterRecord(DatabaseContents& contents, RecordState state, bool layout) {
    const auto id = makeObject<BlockTableRecord>(contents, contents.blockTable, std::move(state), layout);
    peek<BlockTable>(contents.blockTable)->add(id, peek<BlockTableRecord>(id)->fields().name);
    return id;
}

Orbx::ErrorStatus appendRecord(DatabaseContents& contents, RecordState state, bool layout, KtDbObjectId& id) {
    WriteOpening table(contents.blockTable);
    if (table.status() != Orbx::eOk) {
        return table.status();
    }
    static_cast<void>(beginChange(contents.blockTable)); // it is open for write
    id = enterRecord(contents, std::move(state), layout);
    contents.history.record(AppendRecord{id});
    notifySubObjectModified(id);
    table.close();
    return Orbx::eOk;
}

KtDbObjectId appendAttributeTo(DatabaseContents& contents, KtDbObjectId reference, std::wstring_view tag,
                               std::wstring_view text) {
    const KtDbObjectId id = makeObject<Attribute>(contents, reference, tag, text);
    withReference(reference, [id](auto& owner) { owner.appendAttribute(id); });
    contents.designators.note(id, tag, text);
    contents.history.record(AppendRecord{id});
    notifySubObjectModified(id);
    return id;
}

KtDbObjectId appendGraphTo(DatabaseContents& contents, BlockTableRecord& record) {
    const KtDbObjectId id = makeObject<EvalGraph>(contents, record.objectId());
    record.setGraph(id);
    contents.history.record(AppendRecord{id});
    notifySubObjectModified(id);
    return id;
}

void enterReference(DatabaseContents& contents, BlockTableRecord& container, KtDbObjectId definition,
                    KtDbObjectId reference) {
    container.entities().push_back(reference);
    peek<BlockTableRecord>(definition)->ownReferences().append(reference);
    countPlacement(definition, container.objectId(), 1);
    contents.history.record(AppendRecord{reference});
    notifySubObjectModified(reference);
}

} // namespace kthost
