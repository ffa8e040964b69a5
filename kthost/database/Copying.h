#pragma once

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/ObjectAccess.h"

#include <KtGe.h>

#include <utility>
#include <vector>

namespace kthost {

/// Sources and their copies, in the order in which `copied` is to be sent.
using Copies = std::vector<std::pair<KtDbObjectId, KtDbObjectId>>;

/// Makes what the copies of tables are drawn through: an anonymous record for each table among the
/// references, in their order. Nothing is done when one cannot be made.
Orbx::ErrorStatus prepareTableRecords(DatabaseContents& contents, const std::vector<KtDbObjectId>& references,
                                      std::vector<KtDbObjectId>& records);

/// Appends a copy of the reference, its living attributes and its extended data to a container that is open
/// for write, its change announced. `tableRecord` is looked at for a table only. Adds to `copies`; sends
/// nothing to the source.
KtDbObjectId copyInto(DatabaseContents& contents, KtDbObjectId source, BlockTableRecord& container,
                      const KtGePoint3d& position, KtDbObjectId tableRecord, Copies& copies);

/// Sends `copied` for each pair.
void notifyCopies(const Copies& copies);

} // namespace kthost
