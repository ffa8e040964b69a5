#include "kthost/database/Definitions.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Copying.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Erasing.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/ReferenceErasing.h"
#include "kthost/database/WriteOpening.h"

#include <algorithm>

namespace kthost {

namespace {

Orbx::ErrorStatus addRecord(DatabaseContents& contents, std::wstring_view name, bool layout,
                            KtDbObjectId& id) {
    const Orbx::ErrorStatus refusal = refusalOfName(contents, name, layout);
    return refusal != Orbx::eOk ? refusal : appendRecord(contents, namedRecord(name), layout, id);
}

/// Copies the references into the record, and a reactor of the source record hears of it first when the
/// record is a copy of that as a whole (not null).
Orbx::ErrorStatus fill(DatabaseContents& contents, KtDbObjectId record,
                       const std::vector<KtDbObjectId>& references, KtDbObjectId copiedRecord) {
    WriteOpening opening(record);
    std::vector<KtDbObjectId> tables;
    Orbx::ErrorStatus status = opening.status();
    status = status == Orbx::eOk ? prepareTableRecords(contents, references, tables) : status;
    if (status != Orbx::eOk) {
        return status;
    }
    static_cast<void>(beginChange(record)); // it is open for write
    BlockTableRecord& container = *peek<BlockTableRecord>(record);
    Copies copies;
    if (!copiedRecord.isNull()) {
        copies.emplace_back(copiedRecord, record);
    }
    for (std::size_t i = 0; i < references.size(); ++i) {
        withReference(references[i], [&](const auto& reference) {
            copyInto(contents, references[i], container, reference.position(), tables[i], copies);
        });
    }
    notifyCopies(copies);
    opening.close();
    return Orbx::eOk;
}

void copyGraph(DatabaseContents& contents, KtDbObjectId source, KtDbObjectId copy) {
    const KtDbObjectId graph = peek<BlockTableRecord>(source)->graph();
    if (!graph.isNull() && !graph.isErased()) {
        WriteOpening opening(copy);
        static_cast<void>(beginChange(copy)); // it is new, so nobody else has it open
        appendGraphTo(contents, *peek<BlockTableRecord>(copy));
        opening.close();
    }
}

Orbx::ErrorStatus refusalToWriteAll(const std::vector<KtDbObjectId>& ids) {
    for (const KtDbObjectId id : ids) {
        if (const Orbx::ErrorStatus refusal = refusalToWrite(id); refusal != Orbx::eOk) {
            return refusal;
        }
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus eraseAll(const std::vector<KtDbObjectId>& references) {
    Orbx::ErrorStatus status = Orbx::eOk;
    for (std::size_t i = 0; i < references.size() && status == Orbx::eOk; ++i) {
        status = changeReferenceErased(references[i], true);
    }
    return status;
}

/// What would be placed in the definition must not contain it.
Orbx::ErrorStatus refusalToHold(KtDbObjectId definition, KtDbObjectId source) {
    for (const auto& [placed, number] : peek<BlockTableRecord>(source)->contains()) {
        if (wouldContainItself(placed, definition)) {
            return Orbx::eSelfReference;
        }
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus refusalToRedefine(const DatabaseContents& contents, KtDbObjectId definition,
                                    KtDbObjectId source) {
    Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, definition);
    if (refusal == Orbx::eOk && (definition == source || peek<BlockTableRecord>(definition)->isLayout())) {
        refusal = Orbx::eInvalidInput;
    }
    if (refusal == Orbx::eOk && !source.isNull()) {
        refusal = refusalToChangeRecord(contents, source);
        refusal = refusal == Orbx::eOk ? refusalToHold(definition, source) : refusal;
    }
    return refusal;
}

std::vector<KtDbObjectId> livingRepresentations(KtDbObjectId definition) {
    std::vector<KtDbObjectId> found;
    for (const KtDbObjectId id : peek<BlockTableRecord>(definition)->representations()) {
        const auto* record = peek<BlockTableRecord>(id);
        if (record != nullptr && !id.isErased() && record->fields().represents == definition) {
            found.push_back(id);
        }
    }
    return found;
}

/// A reference that lies in something erased does not count.
bool isReferredTo(KtDbObjectId record) {
    for (const KtDbObjectId reference : peek<BlockTableRecord>(record)->references().living()) {
        if (!reference.isEffectivelyErased()) {
            return true;
        }
    }
    return false;
}

Orbx::ErrorStatus refusalToPurge(const DatabaseContents& contents, KtDbObjectId definition) {
    const Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, definition);
    if (refusal != Orbx::eOk) {
        return refusal;
    }
    return peek<BlockTableRecord>(definition)->isLayout() ? Orbx::eInvalidInput : Orbx::eOk;
}

/// Everything that goes with the definition: representations, then itself; what lies in each before each.
struct Purge {
    std::vector<KtDbObjectId> records;
    std::vector<KtDbObjectId> references;
};

Purge purgeOf(KtDbObjectId definition) {
    Purge purge;
    purge.records = livingRepresentations(definition);
    purge.records.push_back(definition);
    for (const KtDbObjectId record : purge.records) {
        const std::vector<KtDbObjectId> inside = referencesIn(record);
        purge.references.insert(purge.references.end(), inside.begin(), inside.end());
    }
    return purge;
}

Orbx::ErrorStatus eraseRecords(DatabaseContents& contents, const std::vector<KtDbObjectId>& records) {
    WriteOpening table(contents.blockTable);
    if (table.status() != Orbx::eOk) {
        return table.status();
    }
    static_cast<void>(beginChange(contents.blockTable)); // it is open for write
    Orbx::ErrorStatus status = Orbx::eOk;
    for (const KtDbObjectId id : records) {
        WriteOpening record(id);
        const Orbx::ErrorStatus erased =
            record.status() == Orbx::eOk ? changeErased(id, true) : record.status();
        status = status == Orbx::eOk ? erased : status;
        record.close();
    }
    table.close();
    return status;
}

} // namespace

Orbx::ErrorStatus addDefinition(Database& database, std::wstring_view name, KtDbObjectId& definition) {
    return addRecord(database.contents(), name, false, definition);
}

Orbx::ErrorStatus addAnonymousDefinition(Database& database, wchar_t letter, KtDbObjectId& definition) {
    DatabaseContents& contents = database.contents();
    const std::wstring name = peek<BlockTable>(contents.blockTable)->nextAnonymousName(letter);
    return appendRecord(contents, namedRecord(name), false, definition);
}

Orbx::ErrorStatus addLayout(Database& database, std::wstring_view name, KtDbObjectId& layout) {
    return addRecord(database.contents(), name, true, layout);
}

Orbx::ErrorStatus copyDefinition(Database& database, KtDbObjectId source, std::wstring_view name,
                                 KtDbObjectId& copy) {
    DatabaseContents& contents = database.contents();
    Orbx::ErrorStatus status = refusalToChangeRecord(contents, source);
    status = status == Orbx::eOk ? addDefinition(database, name, copy) : status;
    if (status == Orbx::eOk) {
        copyGraph(contents, source, copy);
        status = fill(contents, copy, referencesIn(source), source);
    }
    return status;
}

Orbx::ErrorStatus redefine(Database& database, KtDbObjectId definition, KtDbObjectId source) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalToRedefine(contents, definition, source);
        refusal != Orbx::eOk) {
        return refusal;
    }
    const std::vector<KtDbObjectId> before = referencesIn(definition);
    Orbx::ErrorStatus status = refusalToWriteAll(before);
    status = status == Orbx::eOk ? refusalToWriteAll({definition, contents.blockTable}) : status;
    status = status == Orbx::eOk ? eraseAll(before) : status;
    const auto after = source.isNull() ? std::vector<KtDbObjectId>() : referencesIn(source);
    return status == Orbx::eOk ? fill(contents, definition, after, {}) : status;
}

Orbx::ErrorStatus renameDefinition(Database& database, KtDbObjectId definition, std::wstring_view name) {
    DatabaseContents& contents = database.contents();
    Orbx::ErrorStatus status = refusalToChangeRecord(contents, definition);
    if (status != Orbx::eOk) {
        return status;
    }
    BlockTableRecord& record = *peek<BlockTableRecord>(definition);
    status = record.isLayout() || record.isAnonymous() ? Orbx::eInvalidInput
                                                       : refusalOfName(contents, name, false);
    WriteOpening opening(definition);
    status = status == Orbx::eOk ? opening.status() : status;
    if (status != Orbx::eOk) {
        return status;
    }
    RecordState fields = record.fields();
    fields.name = name;
    status = record.setFields(std::move(fields));
    opening.close();
    return status;
}

Orbx::ErrorStatus purgeDefinition(Database& database, KtDbObjectId definition) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalToPurge(contents, definition); refusal != Orbx::eOk) {
        return refusal;
    }
    const Purge purge = purgeOf(definition);
    if (std::any_of(purge.records.begin(), purge.records.end(), isReferredTo)) {
        return Orbx::eStillReferenced;
    }
    Orbx::ErrorStatus status = refusalToWriteAll(purge.records);
    status = status == Orbx::eOk ? refusalToWriteAll(purge.references) : status;
    status = status == Orbx::eOk ? refusalToWrite(contents.blockTable) : status;
    status = status == Orbx::eOk ? eraseAll(purge.references) : status;
    return status == Orbx::eOk ? eraseRecords(contents, purge.records) : status;
}

} // namespace kthost
