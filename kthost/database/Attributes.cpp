#include "kthost/database/Attributes.h"

#include "kthost/database/Appending.h"
#include "kthost/database/Changes.h"
#include "kthost/database/Erasing.h"
#include "kthost/database/RecordChecks.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

namespace {

KtDbObjectId firstWithTag(KtDbObjectId reference, std::wstring_view tag) {
    KtDbObjectId found;
    withReference(reference, [&](const auto& owner) {
        for (std::size_t i = 0; i < owner.attributes().size() && found.isNull(); ++i) {
            const KtDbObjectId id = owner.attributes()[i];
            const auto* attribute = peek<Attribute>(id);
            if (attribute != nullptr && !id.isErased() && attribute->tag() == tag) {
                found = id;
            }
        }
    });
    return found;
}

Orbx::ErrorStatus setText(KtDbObjectId id, std::wstring_view text) {
    WriteOpening attribute(id);
    Orbx::ErrorStatus status = attribute.status();
    if (status == Orbx::eOk) {
        status = peek<Attribute>(id)->setText(text);
        attribute.close();
    }
    return status;
}

Orbx::ErrorStatus changeErasedWithOwner(KtDbObjectId attribute, bool erasing) {
    const KtDbObjectId reference = ownerOf(attribute);
    WriteOpening owner(reference);
    WriteOpening object(attribute);
    const Orbx::ErrorStatus status = owner.status() == Orbx::eOk ? object.status() : owner.status();
    if (status != Orbx::eOk) {
        return status;
    }
    static_cast<void>(beginChange(reference)); // it is open for write
    const Orbx::ErrorStatus changed = changeErased(attribute, erasing);
    object.close();
    owner.close();
    return changed;
}

} // namespace

Orbx::ErrorStatus setAttributeText(Database& database, KtDbObjectId reference, std::wstring_view tag,
                                   std::wstring_view text) {
    if (const Orbx::ErrorStatus refusal = refusalOfReference(database.contents(), reference);
        refusal != Orbx::eOk) {
        return refusal;
    }
    KtDbObjectId attribute = firstWithTag(reference, tag);
    return attribute.isNull() ? appendAttribute(database, reference, tag, text, attribute)
                              : setText(attribute, text);
}

Orbx::ErrorStatus appendAttribute(Database& database, KtDbObjectId reference, std::wstring_view tag,
                                  std::wstring_view text, KtDbObjectId& attribute) {
    if (const Orbx::ErrorStatus refusal = refusalOfReference(database.contents(), reference);
        refusal != Orbx::eOk) {
        return refusal;
    }
    WriteOpening owner(reference);
    if (owner.status() != Orbx::eOk) {
        return owner.status();
    }
    static_cast<void>(beginChange(reference)); // it is open for write
    attribute = appendAttributeTo(database.contents(), reference, tag, text);
    owner.close();
    return Orbx::eOk;
}

Orbx::ErrorStatus eraseAttribute(Database& database, KtDbObjectId attribute) {
    const Orbx::ErrorStatus refusal = refusalOfAttribute(database.contents(), attribute);
    return refusal == Orbx::eOk ? changeErasedWithOwner(attribute, true) : refusal;
}

Orbx::ErrorStatus restoreAttribute(Database& database, KtDbObjectId attribute) {
    Orbx::ErrorStatus refusal = refusalOfAttribute(database.contents(), attribute, true);
    refusal = refusal == Orbx::eOk ? refusalToRestore(attribute) : refusal;
    return refusal == Orbx::eOk && attribute.isErased() ? changeErasedWithOwner(attribute, false) : refusal;
}

} // namespace kthost
