#pragma once

#include "Refusal.h"

#include <KtDb.h>
#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

namespace parts {

/// True for what an opening gives when only somebody else's opening of the same object keeps it from being
/// done: later it can be.
bool isInUse(Orbx::ErrorStatus status);

/// Somebody else has an object open that would have to be opened: for reading to list the drawing, for
/// writing to draw the list.
class InUse : public Refusal {
public:
    InUse(KtDbObjectId object, KtDb::OpenMode mode);

    KtDbObjectId object() const { return object_; }

    /// True when it can be opened now, or is not there any more. Takes one opening.
    bool isOver() const;

private:
    KtDbObjectId object_;
    KtDb::OpenMode mode_;
};

} // namespace parts
