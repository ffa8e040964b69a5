#pragma once

#include "kthost/database/Database.h"
#include "kthost/database/DesignatorIndex.h"
#include "kthost/database/ObjectAccess.h"
#include "kthost/database/ObjectStore.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/database/WriteSession.h"
#include "kthost/database/XData.h"

#include <KtDbObjectId.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kthost {

struct DatabaseContents {
    DatabaseContents(Database& database, std::wstring drawing);

    std::wstring name;
    std::uint32_t slot;
    const Database* attachedTo = nullptr; ///< which outlives this; null for a document's own drawing
    KtDbObjectId blockTable;
    KtDbObjectId modelSpace; ///< null when there never was one
    bool recording = true;
    UndoHistory history;
    std::unordered_map<KtDbObjectId, WriteSession> sessions;
    std::unordered_map<KtDbObjectId, XData> xdata;
    std::unordered_set<KtDbObjectId> erased; ///< every object that is erased and not released
    std::unordered_map<KtDbObjectId, std::vector<KtDbObjectId>>
        crowded; ///< released ids that lists still hold
    DesignatorIndex designators;
};

/// Null for an id that is not valid or whose database is closed.
DatabaseContents* contentsOf(KtDbObjectId id);

/// Makes an object of the database's own, closed. The owner's lists are the caller's business.
template <class T, class... Arguments>
KtDbObjectId makeObject(DatabaseContents& contents, KtDbObjectId owner, Arguments&&... arguments) {
    return ObjectStore::instance().add<T>(contents.slot, kKindOf<T>, owner,
                                          std::forward<Arguments>(arguments)...);
}

} // namespace kthost
