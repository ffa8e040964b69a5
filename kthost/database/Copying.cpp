#include "kthost/database/Copying.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Notifications.h"

namespace kthost {

namespace {

KtDbObjectId appendCopy(DatabaseContents& contents, KtDbObjectId source, BlockTableRecord& container,
                        const KtGePoint3d& position, KtDbObjectId tableRecord) {
    if (const auto* table = peek<Table>(source)) {
        auto state = std::get<TableState>(table->state());
        state.position = position;
        return appendReferenceTo<Table>(contents, container, tableRecord, std::move(state));
    }
    const KtDbObjectId definition = peek<BlockReference>(source)->blockTableRecord();
    return appendReferenceTo<BlockReference>(contents, container, definition, position);
}

std::vector<KtDbObjectId> livingAttributes(KtDbObjectId reference) {
    std::vector<KtDbObjectId> ids;
    withReference(reference, [&ids](const auto& owner) {
        for (std::size_t i = 0; i < owner.attributes().size(); ++i) {
            if (!owner.attributes()[i].isErased()) {
                ids.push_back(owner.attributes()[i]);
            }
        }
    });
    return ids;
}

void copyXData(DatabaseContents& contents, KtDbObjectId source, KtDbObjectId copy) {
    if (const auto data = contents.xdata.find(source); data != contents.xdata.end()) {
        contents.xdata.insert_or_assign(copy, XData(data->second));
    }
}

} // namespace

Orbx::ErrorStatus prepareTableRecords(DatabaseContents& contents, const std::vector<KtDbObjectId>& references,
                                      std::vector<KtDbObjectId>& records) {
    auto* table = peek<BlockTable>(contents.blockTable);
    for (const KtDbObjectId reference : references) {
        KtDbObjectId record;
        if (peek<Table>(reference) != nullptr) {
            const Orbx::ErrorStatus status =
                appendRecord(contents, namedRecord(table->nextAnonymousName(L'T')), false, record);
            if (status != Orbx::eOk) {
                return status;
            }
        }
        records.push_back(record);
    }
    return Orbx::eOk;
}

KtDbObjectId copyInto(DatabaseContents& contents, KtDbObjectId source, BlockTableRecord& container,
                      const KtGePoint3d& position, KtDbObjectId tableRecord, Copies& copies) {
    const KtDbObjectId copy = appendCopy(contents, source, container, position, tableRecord);
    copies.emplace_back(source, copy);
    copyXData(contents, source, copy);
    for (const KtDbObjectId id : livingAttributes(source)) {
        const auto* attribute = peek<Attribute>(id);
        copies.emplace_back(id, appendAttributeTo(contents, copy, attribute->tag(), attribute->text()));
        copyXData(contents, id, copies.back().second);
    }
    return copy;
}

void notifyCopies(const Copies& copies) {
    for (const auto& [source, copy] : copies) {
        notifyCopied(source, copy);
    }
}

} // namespace kthost
