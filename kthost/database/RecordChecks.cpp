#include "kthost/database/RecordChecks.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

namespace {

bool belongsTo(const DatabaseContents& contents, KtDbObjectId id) {
    return contentsOf(id) == &contents;
}

Orbx::ErrorStatus refusalOfObject(const DatabaseContents& contents, KtDbObjectId id, bool openErased) {
    if (id.isNull()) {
        return Orbx::eNullObjectId;
    }
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || head->object() == nullptr) {
        return id.isValid() ? Orbx::eObjectReleased : Orbx::eInvalidObjectId;
    }
    if (!belongsTo(contents, id)) {
        return Orbx::eWrongDatabase;
    }
    return head->erased && !openErased ? Orbx::eWasErased : Orbx::eOk;
}

} // namespace

Orbx::ErrorStatus refusalOfRecord(const DatabaseContents& contents, KtDbObjectId id) {
    const bool there = peek<BlockTableRecord>(id) != nullptr && belongsTo(contents, id) && !id.isErased();
    return there ? Orbx::eOk : Orbx::eInvalidBlockId;
}

Orbx::ErrorStatus refusalToChangeRecord(const DatabaseContents& contents, KtDbObjectId id) {
    if (const Orbx::ErrorStatus refusal = refusalOfRecord(contents, id); refusal != Orbx::eOk) {
        return refusal;
    }
    const RecordState& fields = peek<BlockTableRecord>(id)->fields();
    return fields.dependent || fields.drawing != nullptr ? Orbx::eIsDependent : Orbx::eOk;
}

Orbx::ErrorStatus refusalOfName(const DatabaseContents& contents, std::wstring_view name, bool layout) {
    const bool fits = !name.empty() && name.find_first_of(std::wstring_view(L"|\0", 2)) == name.npos &&
                      (layout || name.front() != L'*');
    if (!fits) {
        return Orbx::eInvalidInput;
    }
    const bool taken = !peek<BlockTable>(contents.blockTable)->living(name).isNull();
    return taken ? Orbx::eDuplicateKey : Orbx::eOk;
}

Orbx::ErrorStatus refusalOfReference(const DatabaseContents& contents, KtDbObjectId id, bool openErased) {
    const Orbx::ErrorStatus refusal = refusalOfObject(contents, id, openErased);
    const bool fits = refusal != Orbx::eOk || withReference(id, [](const auto& /*reference*/) {});
    return fits ? refusal : Orbx::eNotThatKindOfClass;
}

Orbx::ErrorStatus refusalOfAttribute(const DatabaseContents& contents, KtDbObjectId id, bool openErased) {
    const Orbx::ErrorStatus refusal = refusalOfObject(contents, id, openErased);
    const bool fits = refusal != Orbx::eOk || peek<Attribute>(id) != nullptr;
    return fits ? refusal : Orbx::eNotThatKindOfClass;
}

} // namespace kthost
