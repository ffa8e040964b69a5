#include "kthost/console/UnitRecord.h"

#include "kthost/console/CommandError.h"
#include "kthost/console/StatusText.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/reader/UnitLabel.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

KtDbObjectId recordForUnit(Database& database, KtDbObjectId block, std::optional<std::uint32_t> unit) {
    const std::string name = toUtf8(recordName(block));
    if (!isDynamic(block)) {
        if (unit.value_or(1) != 1) {
            throw CommandError("'" + name + "' has one unit only");
        }
        return block;
    }
    const std::wstring label = unitLabel(static_cast<int>(unit.value_or(1)));
    KtDbObjectId record = representation(block, label);
    if (record.isNull()) {
        require(addRepresentation(database, block, label, record), "'" + name + "' cannot get another unit");
    }
    return record;
}

} // namespace kthost
