#include "bench/drawings/Layouts.h"

#include "bench/drawings/Require.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"

#include <string>

namespace bench {

Ids makeLayouts(kthost::Database& database, std::size_t count) {
    Ids layouts = kthost::records(database, true);
    while (layouts.size() < count) {
        KtDbObjectId id;
        require(kthost::addLayout(database, L"sheet" + std::to_wstring(layouts.size()), id));
        layouts.push_back(id);
    }
    return layouts;
}

} // namespace bench
