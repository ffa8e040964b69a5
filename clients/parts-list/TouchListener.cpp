#include "TouchListener.h"

#include "OpenObject.h"

#include <KtDbAttribute.h>

#include <utility>

namespace parts {

TouchListener::~TouchListener() {
    for (const KtDbObjectId id : objects_) {
        const OpenObject<KtDbObject> object(id, KtDb::kForNotify, true);
        if (object) {
            // It was added; there is nobody to tell of an object that denies it.
            static_cast<void>(object->removeReactor(this));
        }
    }
}

void TouchListener::listenTo(std::vector<KtDbObjectId> objects) {
    if (isComplete_ && objects == asked_) {
        return;
    }
    isComplete_ = true;
    objects_.reserve(objects.size());
    for (const KtDbObjectId id : objects) {
        if (objects_.contains(id)) {
            continue;
        }
        const OpenObject<KtDbObject> object(id, KtDb::kForNotify);
        if (object && object->addReactor(this) == Orbx::eOk) {
            objects_.insert(id);
        } else {
            isComplete_ = false;
        }
    }
    asked_ = std::move(objects);
}

void TouchListener::forget() {
    touched_ = false;
    touchedObjects_.clear();
}

void TouchListener::openedForModify(const KtDbObject* object) {
    touched_ = true;
    touchedObjects_.insert(object->objectId());
}

/// What lies in a record is heard on its own account.
void TouchListener::subObjectModified(const KtDbObject* object, const KtDbObject* subObject) {
    if (subObject->isKindOf(KtDbAttribute::desc())) {
        touched_ = true;
        touchedObjects_.insert(object->objectId());
    }
}

void TouchListener::goodbye(const KtDbObject* object) {
    objects_.erase(object->objectId());
    isComplete_ = false;
    static_cast<void>(object->removeReactor(this)); // the object is going either way
}

} // namespace parts
