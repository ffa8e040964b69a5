#include "kthost/database/Appending.h"

#include "kthost/database/Changes.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

KtDbObjectId enterRecord(DatabaseContents& contents, std::unique_ptr<BlockTableRecord> record) {
    const std::wstring name = record->fields().name;
    const KtDbObjectId id = adopt(contents, std::move(record), contents.blockTable);
    peek<BlockTable>(contents.blockTable)->add(id, name);
    return id;
}

Orbx::ErrorStatus appendRecord(DatabaseContents& contents, std::unique_ptr<BlockTableRecord> record,
                               KtDbObjectId& id) {
    WriteOpening table(contents.blockTable);
    if (table.status() != Orbx::eOk) {
        return table.status();
    }
    static_cast<void>(beginChange(contents.blockTable)); // it is open for write
    id = enterRecord(contents, std::move(record));
    contents.history.record(AppendRecord{id});
    notifySubObjectModified(id);
    table.close();
    return Orbx::eOk;
}

KtDbObjectId appendAttributeTo(DatabaseContents& contents, KtDbObjectId reference, std::wstring_view tag,
                               std::wstring_view text) {
    const KtDbObjectId id = adopt(contents, std::make_unique<Attribute>(tag, text), reference);
    withReference(reference, [id](auto& owner) { owner.attributes().append(id); });
    contents.designators.note(id, tag, text);
    contents.history.record(AppendRecord{id});
    notifySubObjectModified(id);
    return id;
}

KtDbObjectId appendGraphTo(DatabaseContents& contents, BlockTableRecord& record) {
    const KtDbObjectId id = adopt(contents, std::make_unique<EvalGraph>(), record.objectId());
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
