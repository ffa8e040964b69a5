#pragma once

#include "InUse.h"
#include "OpenObject.h"

namespace parts {

/// An object opened for reading for as long as this lives. Empty when there is none of that class, or none
/// any more. Throws InUse when it is there and cannot be read now: what is listed without it would be no list
/// of the drawing.
template <typename T>
class ReadObject : public OpenObject<T> {
public:
    explicit ReadObject(KtDbObjectId id) : OpenObject<T>(id) {
        if (isInUse(this->status())) {
            throw InUse(id, KtDb::kForRead);
        }
    }
};

} // namespace parts
