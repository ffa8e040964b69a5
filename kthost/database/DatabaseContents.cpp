#include "kthost/database/DatabaseContents.h"

namespace kthost {

DatabaseContents::DatabaseContents(Database& database, std::wstring drawing)
    : name(std::move(drawing)),
      slot(ObjectStore::instance().addDatabase(database)),
      history(database) {}

DatabaseContents* contentsOf(KtDbObjectId id) {
    Database* database = ObjectStore::instance().databaseOf(id);
    return database == nullptr ? nullptr : &database->contents();
}

} // namespace kthost
