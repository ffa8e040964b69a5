#pragma once

#include "kthost/database/References.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// What references are called where they lie (extended data under kKtDbOccurrences), kept in step with their
/// Reference attributes.
namespace kthost {

/// Extended data for a reference about to be placed straight in a layout: its designator there and its unit.
/// None for one without a Reference attribute, and inside a block, whose places are not counted.
std::vector<XDataValue> designateInLayout(const Database& database, const NewReference& reference,
                                          std::uint32_t unit);

/// Occurrences that are called `before` are called `after`. Others, such as those of a block placed several
/// times, keep their names. Throws CommandError.
void redesignate(Database& database, KtDbObjectId reference, std::wstring_view before,
                 std::wstring_view after);

} // namespace kthost
