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
#include <vector>

namespace kthost {

struct DatabaseContents {
    DatabaseContents(Database& database, std::wstring drawing);

    std::wstring name;
    std::uint32_t slot;
    KtDbObjectId blockTable;
    KtDbObjectId modelSpace; ///< null when there never was one
    bool recording = true;
    UndoHistory history;
    std::unordered_map<KtDbObjectId, WriteSession> sessions;
    std::unordered_map<KtDbObjectId, XData> xdata;
    std::unordered_set<KtDbObjectId> erased;  ///< every object that is erased and not released
    std::unordered_set<KtDbObjectId> crowded; ///< objects whose lists hold released ids
    DesignatorIndex designators;
};

/// Null for an id that is not valid or whose database is closed.
DatabaseContents* contentsOf(KtDbObjectId id);

/// Makes the object the database's own, and closed. The owner's lists are the caller's business.
template <class T>
KtDbObjectId adopt(DatabaseContents& contents, std::unique_ptr<T> object, KtDbObjectId owner) {
    Stub stub;
    stub.object = object.get();
    stub.owner = owner;
    stub.kind = kKindOf<T>;
    const KtDbObjectId id = ObjectStore::instance().add(contents.slot, stub);
    object.release()->head().id = id;
    return id;
}

} // namespace kthost
