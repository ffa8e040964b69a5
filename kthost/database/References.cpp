#include "kthost/database/References.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Copying.h"
#include "kthost/database/Erasing.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/ReferenceErasing.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToPlace(const DatabaseContents& contents, const NewReference& reference) {
    Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, reference.container);
    refusal = refusal == Orbx::eOk ? refusalOfRecord(contents, reference.definition) : refusal;
    if (refusal != Orbx::eOk) {
        return refusal;
    }
    const auto* definition = peek<BlockTableRecord>(reference.definition);
    if (definition->isLayout()) {
        return Orbx::eInvalidBlockId;
    }
    if (definition->isDependent()) {
        return Orbx::eIsDependent;
    }
    const bool circle = wouldContainItself(reference.definition, reference.container);
    return circle ? Orbx::eSelfReference : Orbx::eOk;
}

KtDbObjectId append(DatabaseContents& contents, const NewReference& reference) {
    BlockTableRecord& container = *peek<BlockTableRecord>(reference.container);
    const KtDbObjectId id =
        appendReferenceTo<BlockReference>(contents, container, reference.definition, reference.position);
    for (const AttributeText& attribute : reference.attributes) {
        appendAttributeTo(contents, id, attribute.tag, attribute.text);
    }
    if (!reference.occurrences.empty()) {
        contents.xdata[id].applications.push_back({kKtDbOccurrences, reference.occurrences});
    }
    return id;
}

} // namespace

Orbx::ErrorStatus insertReference(Database& database, const NewReference& reference, KtDbObjectId& id) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalToPlace(contents, reference); refusal != Orbx::eOk) {
        return refusal;
    }
    WriteOpening container(reference.container);
    if (container.status() != Orbx::eOk) {
        return container.status();
    }
    static_cast<void>(beginChange(reference.container)); // it is open for write
    id = append(contents, reference);
    container.close();
    return Orbx::eOk;
}

Orbx::ErrorStatus moveReference(Database& database, KtDbObjectId reference, const KtGePoint3d& position) {
    if (const Orbx::ErrorStatus refusal = refusalOfReference(database.contents(), reference);
        refusal != Orbx::eOk) {
        return refusal;
    }
    WriteOpening opening(reference);
    if (opening.status() != Orbx::eOk) {
        return opening.status();
    }
    Orbx::ErrorStatus status = Orbx::eOk;
    withReference(reference, [&](auto& opened) { status = opened.setPosition(position); });
    opening.close();
    return status;
}

Orbx::ErrorStatus copyReference(Database& database, KtDbObjectId reference, const KtGePoint3d& position,
                                KtDbObjectId& copy) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalOfReference(contents, reference); refusal != Orbx::eOk) {
        return refusal;
    }
    const KtDbObjectId owner = ownerOf(reference);
    WriteOpening container(owner);
    std::vector<KtDbObjectId> tables;
    Orbx::ErrorStatus status = container.status();
    status = status == Orbx::eOk ? prepareTableRecords(contents, {reference}, tables) : status;
    if (status != Orbx::eOk) {
        return status;
    }
    static_cast<void>(beginChange(owner)); // it is open for write
    Copies copies;
    copy = copyInto(contents, reference, *peek<BlockTableRecord>(owner), position, tables.front(), copies);
    notifyCopies(copies);
    container.close();
    return Orbx::eOk;
}

Orbx::ErrorStatus changeReferenceErased(KtDbObjectId reference, bool erasing) {
    const KtDbObjectId owner = ownerOf(reference);
    WriteOpening container(owner);
    WriteOpening object(reference);
    const Orbx::ErrorStatus status = container.status() == Orbx::eOk ? object.status() : container.status();
    if (status != Orbx::eOk) {
        return status;
    }
    static_cast<void>(beginChange(owner)); // it is open for write
    const Orbx::ErrorStatus changed = changeErased(reference, erasing);
    object.close();
    container.close();
    return changed;
}

Orbx::ErrorStatus eraseReference(Database& database, KtDbObjectId reference) {
    const Orbx::ErrorStatus refusal = refusalOfReference(database.contents(), reference);
    return refusal == Orbx::eOk ? changeReferenceErased(reference, true) : refusal;
}

Orbx::ErrorStatus restoreReference(Database& database, KtDbObjectId reference) {
    Orbx::ErrorStatus refusal = refusalOfReference(database.contents(), reference, true);
    refusal = refusal == Orbx::eOk ? refusalToRestore(reference) : refusal;
    return refusal == Orbx::eOk && reference.isErased() ? changeReferenceErased(reference, false) : refusal;
}

} // namespace kthost
