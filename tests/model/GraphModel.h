#pragma once

#include "tests/model/Snapshot.h"

namespace ktmodel {

class BlocksModel;

/// Blocks that lie in a container, or inside those, at any depth.
NestedAnswer nestedBlocks(const BlocksModel& blocks, KtDbObjectId container, bool recursive);
/// How often a block lies in a container; recursive also through a block that lies in the container itself,
/// and no deeper.
std::uint32_t countReferences(const BlocksModel& blocks, KtDbObjectId block, KtDbObjectId container,
                              bool recursive);
/// The same in model space, or in all layouts.
std::uint32_t countInstances(const BlocksModel& blocks, KtDbObjectId block, bool modelSpaceOnly,
                             bool recursive);

GraphAnswer answer(const BlocksModel& blocks, const GraphQuestion& question);

} // namespace ktmodel
