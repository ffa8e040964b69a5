#include "kthost/database/ExternalReferences.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Erasing.h"
#include "kthost/database/ExternalDrawing.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/ReferenceErasing.h"
#include "kthost/database/WriteOpening.h"

#include <algorithm>
#include <map>

namespace kthost {

namespace {

/// Dependent records of an attached drawing, living or erased, by name; the living one where there are both.
using Dependents = std::map<std::wstring, KtDbObjectId, std::less<>>;

std::wstring dependentName(std::wstring_view drawing, std::wstring_view block) {
    return std::wstring(drawing).append(1, L'|').append(block);
}

Orbx::ErrorStatus refusalOfNames(const DatabaseContents& contents, std::wstring_view name,
                                 const Database& drawing) {
    const BlockTable& table = *peek<BlockTable>(contents.blockTable);
    for (const KtDbObjectId id : records(drawing, false)) {
        if (!table.living(dependentName(name, recordName(id))).isNull()) {
            return Orbx::eDuplicateKey;
        }
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus appendDependent(DatabaseContents& contents, std::wstring_view name,
                                  const std::shared_ptr<ExternalDrawing>& drawing, KtDbObjectId mirrored) {
    RecordState state;
    state.name = dependentName(name, recordName(mirrored));
    state.mirrors = mirrored;
    state.source = drawing;
    state.dependent = true;
    KtDbObjectId id;
    return appendRecord(contents, std::move(state), false, id);
}

Orbx::ErrorStatus appendDependents(DatabaseContents& contents, std::wstring_view name,
                                   const std::shared_ptr<ExternalDrawing>& drawing) {
    Orbx::ErrorStatus status = Orbx::eOk;
    for (const KtDbObjectId id : records(*drawing->database, false)) {
        status = status == Orbx::eOk ? appendDependent(contents, name, drawing, id) : status;
    }
    return status;
}

std::shared_ptr<ExternalDrawing> load(const DrawingLoader& loader, const Database& attachedTo) {
    auto drawing = std::make_shared<ExternalDrawing>();
    drawing->loader = loader;
    drawing->database = loader ? loader() : nullptr;
    if (drawing->database == nullptr) {
        return nullptr;
    }
    drawing->database->contents().attachedTo = &attachedTo;
    return drawing;
}

Orbx::ErrorStatus refusalOfDrawing(const DatabaseContents& contents, KtDbObjectId record) {
    const Orbx::ErrorStatus refusal = refusalOfRecord(contents, record);
    const bool stands = refusal == Orbx::eOk && peek<BlockTableRecord>(record)->fields().drawing != nullptr;
    return refusal != Orbx::eOk || stands ? refusal : Orbx::eInvalidInput;
}

Dependents livingDependents(const DatabaseContents& contents, KtDbObjectId record) {
    const std::wstring prefix = dependentName(recordName(record), L"");
    Dependents found;
    for (const KtDbObjectId id : peek<BlockTable>(contents.blockTable)->records()) {
        const auto* each = peek<BlockTableRecord>(id);
        if (each != nullptr && !id.isErased() && each->fields().dependent &&
            each->fields().name.starts_with(prefix)) {
            found.emplace(each->fields().name, id);
        }
    }
    return found;
}

Orbx::ErrorStatus refusalToWriteAll(const DatabaseContents& contents, KtDbObjectId record,
                                    const Dependents& dependents) {
    Orbx::ErrorStatus refusal = refusalToWrite(contents.blockTable);
    refusal = refusal == Orbx::eOk ? refusalToWrite(record) : refusal;
    for (const auto& [name, id] : dependents) {
        refusal = refusal == Orbx::eOk ? refusalToWrite(id) : refusal;
    }
    return refusal;
}

Orbx::ErrorStatus refusalToErase(const std::vector<KtDbObjectId>& references) {
    Orbx::ErrorStatus refusal = Orbx::eOk;
    for (const KtDbObjectId id : references) {
        refusal = refusal == Orbx::eOk ? refusalToWrite(id) : refusal;
        refusal = refusal == Orbx::eOk ? refusalToWrite(ownerOf(id)) : refusal;
    }
    return refusal;
}

Orbx::ErrorStatus eraseRecord(KtDbObjectId id) {
    WriteOpening record(id);
    const Orbx::ErrorStatus status = record.status() == Orbx::eOk ? changeErased(id, true) : record.status();
    record.close();
    return status;
}

Orbx::ErrorStatus eraseFromTable(const DatabaseContents& contents, const std::vector<KtDbObjectId>& ids) {
    WriteOpening table(contents.blockTable);
    Orbx::ErrorStatus status = table.status();
    if (status != Orbx::eOk || ids.empty()) {
        return status;
    }
    static_cast<void>(beginChange(contents.blockTable)); // it is open for write
    for (const KtDbObjectId id : ids) {
        const Orbx::ErrorStatus erased = eraseRecord(id);
        status = status == Orbx::eOk ? erased : status;
    }
    table.close();
    return status;
}

template <typename Change>
Orbx::ErrorStatus changeFields(KtDbObjectId id, Change change) {
    WriteOpening opening(id);
    if (opening.status() != Orbx::eOk) {
        return opening.status();
    }
    auto& record = *peek<BlockTableRecord>(id);
    RecordState fields = record.fields();
    change(fields);
    const Orbx::ErrorStatus status = record.setFields(std::move(fields));
    opening.close();
    return status;
}

/// Points every dependent record at what it mirrors now; adds those that are new and erases those that are
/// gone.
Orbx::ErrorStatus mirrorAnew(DatabaseContents& contents, KtDbObjectId record, Dependents dependents,
                             const std::shared_ptr<ExternalDrawing>& drawing) {
    const std::wstring name(recordName(record));
    Orbx::ErrorStatus status = Orbx::eOk;
    for (const KtDbObjectId id : records(*drawing->database, false)) {
        const auto present = dependents.find(dependentName(name, recordName(id)));
        if (present == dependents.end()) {
            status = status == Orbx::eOk ? appendDependent(contents, name, drawing, id) : status;
        } else {
            const auto changed = changeFields(present->second, [id, &drawing](RecordState& fields) {
                fields.mirrors = id;
                fields.source = drawing;
            });
            status = status == Orbx::eOk ? changed : status;
            dependents.erase(present);
        }
    }
    std::vector<KtDbObjectId> gone;
    std::transform(dependents.begin(), dependents.end(), std::back_inserter(gone),
                   [](const auto& dependent) { return dependent.second; });
    return status == Orbx::eOk ? eraseFromTable(contents, gone) : status;
}

} // namespace

Orbx::ErrorStatus attachDrawing(Database& database, std::wstring_view name, const DrawingLoader& loader,
                                KtDbObjectId& record) {
    DatabaseContents& contents = database.contents();
    Orbx::ErrorStatus status = refusalOfName(contents, name, false);
    status = status == Orbx::eOk ? refusalToWrite(contents.blockTable) : status;
    if (status != Orbx::eOk) {
        return status;
    }
    RecordState state;
    state.name = name;
    state.drawing = load(loader, database);
    if (state.drawing == nullptr) {
        return Orbx::eFileAccess;
    }
    const std::shared_ptr<ExternalDrawing> drawing = state.drawing;
    status = refusalOfNames(contents, name, *drawing->database);
    if (status == Orbx::eOk) {
        status = appendRecord(contents, std::move(state), false, record);
    }
    return status == Orbx::eOk ? appendDependents(contents, name, drawing) : status;
}

Orbx::ErrorStatus detachDrawing(Database& database, KtDbObjectId record) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalOfDrawing(contents, record); refusal != Orbx::eOk) {
        return refusal;
    }
    const std::vector<KtDbObjectId> references = referencesTo(record);
    const Dependents dependents = livingDependents(contents, record);
    Orbx::ErrorStatus status = refusalToWriteAll(contents, record, dependents);
    status = status == Orbx::eOk ? refusalToErase(references) : status;
    if (status != Orbx::eOk) {
        return status;
    }
    for (const KtDbObjectId id : references) {
        const Orbx::ErrorStatus erased = changeReferenceErased(id, true);
        status = status == Orbx::eOk ? erased : status;
    }
    std::vector<KtDbObjectId> going;
    std::transform(dependents.begin(), dependents.end(), std::back_inserter(going),
                   [](const auto& dependent) { return dependent.second; });
    going.push_back(record);
    return status == Orbx::eOk ? eraseFromTable(contents, going) : status;
}

Orbx::ErrorStatus reloadDrawing(Database& database, KtDbObjectId record) {
    const Orbx::ErrorStatus refusal = refusalOfDrawing(database.contents(), record);
    if (refusal != Orbx::eOk) {
        return refusal;
    }
    const std::shared_ptr<ExternalDrawing> drawing = peek<BlockTableRecord>(record)->fields().drawing;
    return reloadDrawing(database, record, drawing->loader);
}

Orbx::ErrorStatus reloadDrawing(Database& database, KtDbObjectId record, const DrawingLoader& loader) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalOfDrawing(contents, record); refusal != Orbx::eOk) {
        return refusal;
    }
    Dependents dependents = livingDependents(contents, record);
    if (const Orbx::ErrorStatus refusal = refusalToWriteAll(contents, record, dependents);
        refusal != Orbx::eOk) {
        return refusal;
    }
    const std::shared_ptr<ExternalDrawing> after = load(loader, database);
    if (after == nullptr) {
        return Orbx::eFileAccess;
    }
    const Orbx::ErrorStatus status =
        changeFields(record, [&after](RecordState& fields) { fields.drawing = after; });
    return status == Orbx::eOk ? mirrorAnew(contents, record, std::move(dependents), after) : status;
}

} // namespace kthost
