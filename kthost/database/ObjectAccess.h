#pragma once

#include "kthost/database/ObjectKinds.h"
#include "kthost/database/ObjectStore.h"

namespace kthost {

template <class T>
inline constexpr bool kIsReferenceKind = false;
template <>
inline constexpr bool kIsReferenceKind<BlockReference> = true;
template <>
inline constexpr bool kIsReferenceKind<Table> = true;

/// The object behind an id, without opening it; null when it is released or of another class.
template <class T>
T* peek(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    const bool fits = head != nullptr && head->object() != nullptr && head->kind == kKindOf<T>;
    return fits ? static_cast<T*>(head->object()) : nullptr;
}

/// Calls `call(reference)` with the block reference or table behind the id; false when it is neither.
template <typename Call>
bool withReference(KtDbObjectId id, Call call) {
    if (auto* reference = peek<BlockReference>(id)) {
        call(*reference);
        return true;
    }
    if (auto* table = peek<Table>(id)) {
        call(*table);
        return true;
    }
    return false;
}

} // namespace kthost
