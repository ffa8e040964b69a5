#include <KtDbObjectId.h>

#include "kthost/database/Database.h"
#include "kthost/database/ObjectStore.h"

using kthost::ObjectStore;
using kthost::Stub;

bool KtDbObjectId::isValid() const {
    return ObjectStore::instance().isValid(*this);
}

bool KtDbObjectId::isErased() const {
    const Stub* stub = ObjectStore::instance().find(*this);
    return stub == nullptr ? isValid() : stub->erased != 0;
}

bool KtDbObjectId::isEffectivelyErased() const {
    KtDbObjectId id = *this;
    while (!id.isNull() && !id.isErased()) {
        const Stub* stub = ObjectStore::instance().find(id);
        id = stub == nullptr ? KtDbObjectId() : stub->owner;
    }
    return !id.isNull();
}

KtDbDatabase* KtDbObjectId::database() const {
    return ObjectStore::instance().databaseOf(*this);
}
