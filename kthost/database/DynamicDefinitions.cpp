#include "kthost/database/DynamicDefinitions.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/WriteOpening.h"

#include <algorithm>

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToRepresent(const DatabaseContents& contents, KtDbObjectId definition,
                                     std::wstring_view label) {
    if (const Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, definition); refusal != Orbx::eOk) {
        return refusal;
    }
    if (!isDynamic(definition)) {
        return Orbx::eInvalidInput;
    }
    return representation(definition, label).isNull() ? Orbx::eOk : Orbx::eDuplicateKey;
}

/// The anonymous record says what it represents; the definition is opened for modify, too, since what belongs
/// to it changes.
Orbx::ErrorStatus represent(KtDbObjectId definition, std::wstring_view label, KtDbObjectId anonymous) {
    WriteOpening owner(definition);
    WriteOpening opening(anonymous);
    const Orbx::ErrorStatus status = owner.status() == Orbx::eOk ? opening.status() : owner.status();
    if (status != Orbx::eOk) {
        return status;
    }
    BlockTableRecord& record = *peek<BlockTableRecord>(anonymous);
    static_cast<void>(beginChange(definition)); // it is open for write
    auto& known = peek<BlockTableRecord>(definition)->representations();
    if (std::find(known.begin(), known.end(), anonymous) == known.end()) {
        known.push_back(anonymous);
    }
    RecordState fields = record.fields();
    fields.represents = definition;
    fields.label = label;
    const Orbx::ErrorStatus changed = record.setFields(std::move(fields));
    opening.close();
    owner.close();
    return changed;
}

} // namespace

Orbx::ErrorStatus makeDynamic(Database& database, KtDbObjectId definition) {
    DatabaseContents& contents = database.contents();
    if (const Orbx::ErrorStatus refusal = refusalToChangeRecord(contents, definition); refusal != Orbx::eOk) {
        return refusal;
    }
    BlockTableRecord& record = *peek<BlockTableRecord>(definition);
    if (record.isLayout() || record.isAnonymous() || isDynamic(definition)) {
        return isDynamic(definition) ? Orbx::eOk : Orbx::eInvalidInput;
    }
    WriteOpening opening(definition);
    if (opening.status() == Orbx::eOk) {
        static_cast<void>(beginChange(definition)); // it is open for write
        appendGraphTo(contents, record);
        opening.close();
    }
    return opening.status();
}

Orbx::ErrorStatus addRepresentation(Database& database, KtDbObjectId definition, std::wstring_view label,
                                    KtDbObjectId& representation) {
    Orbx::ErrorStatus status = refusalToRepresent(database.contents(), definition, label);
    status = status == Orbx::eOk ? refusalToWrite(definition) : status;
    status = status == Orbx::eOk ? addAnonymousDefinition(database, L'U', representation) : status;
    return status == Orbx::eOk ? represent(definition, label, representation) : status;
}

Orbx::ErrorStatus adoptRepresentation(Database& database, KtDbObjectId definition, std::wstring_view label,
                                      KtDbObjectId anonymous) {
    const DatabaseContents& contents = database.contents();
    Orbx::ErrorStatus refusal = refusalToRepresent(contents, definition, label);
    refusal = refusal == Orbx::eOk ? refusalToChangeRecord(contents, anonymous) : refusal;
    if (refusal != Orbx::eOk) {
        return refusal;
    }
    const BlockTableRecord& record = *peek<BlockTableRecord>(anonymous);
    const bool fits = record.isAnonymous() && record.fields().represents.isNull();
    return fits ? represent(definition, label, anonymous) : Orbx::eInvalidInput;
}

bool isDynamic(KtDbObjectId definition) {
    const auto* record = peek<BlockTableRecord>(definition);
    return record != nullptr && !record->graph().isNull() && !record->graph().isErased();
}

KtDbObjectId representation(KtDbObjectId definition, std::wstring_view label) {
    const auto* record = peek<BlockTableRecord>(definition);
    if (record == nullptr) {
        return {};
    }
    for (const KtDbObjectId id : record->representations()) {
        const auto* each = peek<BlockTableRecord>(id);
        if (each != nullptr && !id.isErased() && each->fields().represents == definition &&
            each->fields().label == label) {
            return id;
        }
    }
    return {};
}

KtDbObjectId representedDefinition(KtDbObjectId record) {
    const auto* found = peek<BlockTableRecord>(record);
    return found == nullptr ? KtDbObjectId() : found->fields().represents;
}

std::wstring_view representationLabel(KtDbObjectId record) {
    const auto* found = peek<BlockTableRecord>(record);
    return found == nullptr ? std::wstring_view() : std::wstring_view(found->fields().label);
}

} // namespace kthost
