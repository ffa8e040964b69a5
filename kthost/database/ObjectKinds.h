#pragma once

#include "kthost/database/Attribute.h"
#include "kthost/database/BlockReference.h"
#include "kthost/database/BlockTable.h"
#include "kthost/database/BlockTableRecord.h"
#include "kthost/database/EvalGraph.h"
#include "kthost/database/ObjectStore.h"
#include "kthost/database/Table.h"

#include <optional>

namespace kthost {

template <class T>
inline constexpr ObjectKind kKindOf = ObjectKind::blockTable;
template <>
inline constexpr ObjectKind kKindOf<BlockTableRecord> = ObjectKind::blockTableRecord;
template <>
inline constexpr ObjectKind kKindOf<BlockReference> = ObjectKind::blockReference;
template <>
inline constexpr ObjectKind kKindOf<Table> = ObjectKind::table;
template <>
inline constexpr ObjectKind kKindOf<Attribute> = ObjectKind::attribute;
template <>
inline constexpr ObjectKind kKindOf<EvalGraph> = ObjectKind::evalGraph;

/// Run-time class of the objects of a kind.
const KtRxClass* classOf(ObjectKind kind);

/// Nothing for kinds of which undo keeps no state. The object must not be released.
std::optional<ObjectState> stateOf(ObjectHead& head);
/// The state is one that was taken from an object of the same kind.
void exchangeState(ObjectHead& head, ObjectState& state);

} // namespace kthost
