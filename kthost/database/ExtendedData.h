#pragma once

#include "kthost/database/XData.h"

#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <string_view>
#include <vector>

namespace kthost {

class Database;

/// Replaces what the application keeps with the object; no values take it away. Opens the object for modify
/// and keeps the change for undo. Statuses are those of opening the object for write.
Orbx::ErrorStatus setXData(Database& database, KtDbObjectId object, std::wstring_view application,
                           std::vector<XDataValue> values);

} // namespace kthost
