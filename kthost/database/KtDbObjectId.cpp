#include <KtDbObjectId.h>

#include "kthost/database/Database.h"
#include "kthost/database/ObjectStore.h"

using kthost::ObjectHead;
using kthost::ObjectStore;

bool KtDbObjectId::isValid() const {
    return ObjectStore::instance().isValid(*this);
}

bool KtDbObjectId::isErased() const {
    const ObjectHead* head = ObjectStore::instance().find(*this);
    return head == nullptr ? isValid() : head->erased;
}

bool KtDbObjectId::isEffectivelyErased() const {
    const ObjectHead* head = ObjectStore::instance().find(*this);
    if (head == nullptr) {
        return isValid();
    }
    while (head != nullptr && !head->erased) {
        head = head->owner.isNull() ? nullptr : ObjectStore::instance().find(head->owner);
    }
    return head != nullptr;
}

KtDbDatabase* KtDbObjectId::database() const {
    return ObjectStore::instance().databaseOf(*this);
}
