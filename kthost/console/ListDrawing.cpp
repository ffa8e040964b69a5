#include "kthost/console/ListRows.h"

#include <KtDbBlockTableRecord.h>
#include <KtDbTable.h>

#include "kthost/console/ObjectNames.h"
#include "kthost/console/OpenForRead.h"
#include "kthost/console/Session.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/runtime/Utf8.h"

#include <cstdio>

namespace kthost {

namespace {

std::string kindOf(KtDbObjectId record) {
    if (isDynamic(record)) {
        return "dynamic";
    }
    const KtDbObjectId represented = representedDefinition(record);
    if (!represented.isNull()) {
        return toUtf8(representationLabel(record)) + " of " + toUtf8(recordName(represented));
    }
    const OpenForRead<KtDbBlockTableRecord> opened(record);
    if (opened->isFromExternalReference()) {
        return "attached";
    }
    if (opened->isDependent()) {
        return "from attached";
    }
    return opened->isAnonymous() ? "anonymous" : "block";
}

std::vector<std::string> recordRow(KtDbObjectId record, const std::string& kind) {
    return {handleText(handleOf(record)), toUtf8(recordName(record)), kind,
            std::to_string(referencesIn(record).size()), std::to_string(referencesTo(record).size())};
}

/// Stable and short: no digits that nobody typed.
std::string numberText(double number) {
    char text[32];
    const int length = std::snprintf(text, sizeof text, "%.10g", number);
    return {text, static_cast<std::size_t>(length)};
}

std::string positionText(const KtGePoint3d& position) {
    return numberText(position.x) + "," + numberText(position.y);
}

std::vector<std::string> referenceRow(KtDbObjectId id, const Database& drawing) {
    const OpenForRead<KtDbBlockReference> reference(id);
    const bool isOwn = id.database() == &drawing;
    return {isOwn ? handleText(handleOf(id)) : "-",
            toUtf8(attributeText(id, L"Reference")),
            blockName(id),
            toUtf8(recordName(ownerOf(id))),
            positionText(reference->position()),
            std::to_string(attributesOf(id).size())};
}

/// References to a block, or to the representations of a dynamic one.
std::vector<KtDbObjectId> placementsOf(const Database& drawing, KtDbObjectId block) {
    std::vector<KtDbObjectId> all = referencesTo(block);
    for (const KtDbObjectId record : records(drawing, false)) {
        if (representedDefinition(record) == block) {
            const std::vector<KtDbObjectId> more = referencesTo(record);
            all.insert(all.end(), more.begin(), more.end());
        }
    }
    return all;
}

} // namespace

ListRows listBlocks(Session& session, const std::wstring& name) {
    ListRows rows{{"Handle", "Block", "Kind", "Holds", "References"}};
    if (!name.empty()) {
        const KtDbObjectId record = session.block(name);
        rows.push_back(recordRow(record, kindOf(record)));
        return rows;
    }
    for (const KtDbObjectId record : records(session.drawing(), false)) {
        rows.push_back(recordRow(record, kindOf(record)));
    }
    return rows;
}

ListRows listReferences(Session& session, const std::wstring& name) {
    const Database& drawing = session.drawing();
    ListRows rows{{"Handle", "Reference", "Block", "Container", "Position", "Attributes"}};
    for (const KtDbObjectId id :
         name.empty() ? allReferences(drawing) : placementsOf(drawing, session.block(name))) {
        rows.push_back(referenceRow(id, drawing));
    }
    return rows;
}

ListRows listLayouts(Session& session, const std::wstring& name) {
    ListRows rows{{"Handle", "Layout", "Kind", "Holds", "References"}};
    for (const KtDbObjectId record : records(session.drawing(), true)) {
        if (name.empty() || name == recordName(record)) {
            rows.push_back(recordRow(record, "layout"));
        }
    }
    return rows;
}

ListRows listAttributes(Session& session, const std::wstring& name) {
    ListRows rows{{"Handle", "Reference", "Tag", "Text"}};
    for (const KtDbObjectId id : name.empty() ? allReferences(session.drawing())
                                              : std::vector<KtDbObjectId>{session.reference(name)}) {
        for (const AttributeView& attribute : attributesOf(id)) {
            rows.push_back({handleText(handleOf(id)), toUtf8(attributeText(id, L"Reference")),
                            toUtf8(attribute.tag), toUtf8(attribute.text)});
        }
    }
    return rows;
}

ListRows listTables(Session& session, const std::wstring& name) {
    ListRows rows{{"Handle", "Name", "Block", "Container", "Position", "Rows", "Columns"}};
    for (const KtDbObjectId id : allReferences(session.drawing())) {
        const OpenForRead<KtDbBlockReference> reference(id);
        const std::wstring_view itsName = attributeText(id, L"Name");
        if (!reference->isKindOf(KtDbTable::desc()) || (!name.empty() && name != itsName)) {
            continue;
        }
        const auto* table = static_cast<const KtDbTable*>(reference.get());
        rows.push_back({handleText(handleOf(id)), toUtf8(itsName), blockName(id),
                        toUtf8(recordName(ownerOf(id))), positionText(table->position()),
                        std::to_string(table->rows()), std::to_string(table->columns())});
    }
    return rows;
}

} // namespace kthost
