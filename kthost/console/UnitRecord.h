#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <optional>

namespace kthost {

class Database;

/// The record that a reference to a unit of a block has to place. For a dynamic definition it is the
/// representation of the unit (the first if none is asked for), which is made if it is not there; otherwise
/// the block itself, which has one unit only. Throws CommandError.
KtDbObjectId recordForUnit(Database& database, KtDbObjectId block, std::optional<std::uint32_t> unit);

} // namespace kthost
