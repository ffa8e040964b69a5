#include "TouchListener.h"

#include "OpenObject.h"

#include <KtDbAttribute.h>

#include <new>
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
    isComplete_ = false; // until all are gone through
    bool areAllHeard = true;
    objects_.reserve(objects.size());
    for (const KtDbObjectId id : objects) {
        const auto [place, isNew] = objects_.insert(id); // before it is heard, as this may fail
        if (!isNew) {
            continue;
        }
        const OpenObject<KtDbObject> object(id, KtDb::kForNotify);
        if (!object || object->addReactor(this) != Orbx::eOk) {
            objects_.erase(place);
            areAllHeard = false;
        }
    }
    asked_ = std::move(objects);
    isComplete_ = areAllHeard;
}

void TouchListener::forget() {
    touched_ = false;
    touchedObjects_.clear();
}

/// Nothing may leave a notification: what cannot be noted for want of memory could be anything.
void TouchListener::note(const KtDbObject* object) {
    touched_ = true;
    try {
        touchedObjects_.insert(object->objectId());
    } catch (const std::bad_alloc&) {
        isComplete_ = false;
    }
}

void TouchListener::openedForModify(const KtDbObject* object) {
    note(object);
}

/// What lies in a record is heard on its own account.
void TouchListener::subObjectModified(const KtDbObject* object, const KtDbObject* subObject) {
    if (subObject->isKindOf(KtDbAttribute::desc())) {
        note(object);
    }
}

void TouchListener::goodbye(const KtDbObject* object) {
    objects_.erase(object->objectId());
    isComplete_ = false;
    static_cast<void>(object->removeReactor(this)); // the object is going either way
}

} // namespace parts
