#pragma once

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <string_view>

/// Dynamic block definitions: those with an evaluation graph under "ORBX_ENHANCEDBLOCK", and the anonymous
/// records that represent them. Statuses as in Definitions.h.
namespace kthost {

class Database;

/// Gives the definition its evaluation graph; eOk, and nothing done, when it has one.
Orbx::ErrorStatus makeDynamic(Database& database, KtDbObjectId definition);
/// Adds an anonymous record "*U1", "*U2", ... that represents a dynamic definition. The label says which
/// representation it is (a unit and style), once for each definition: eDuplicateKey. eInvalidInput when the
/// definition is not dynamic.
Orbx::ErrorStatus addRepresentation(Database& database, KtDbObjectId definition, std::wstring_view label,
                                    KtDbObjectId& representation);
/// The same with an anonymous record that is there already, older than the definition perhaps. eInvalidInput
/// when it is not anonymous or represents something already.
Orbx::ErrorStatus adoptRepresentation(Database& database, KtDbObjectId definition, std::wstring_view label,
                                      KtDbObjectId anonymous);

bool isDynamic(KtDbObjectId definition);
/// The living representation with that label; null when there is none.
KtDbObjectId representation(KtDbObjectId definition, std::wstring_view label);
/// The definition that an anonymous record represents; null when it represents none.
KtDbObjectId representedDefinition(KtDbObjectId record);
/// Empty when the record represents nothing. Stays until the record is changed.
std::wstring_view representationLabel(KtDbObjectId record);

} // namespace kthost
