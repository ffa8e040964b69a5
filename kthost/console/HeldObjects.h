#pragma once

#include <KtDb.h>
#include <KtDbObjectId.h>
#include <OrbxErrorStatus.h>

#include <cstddef>
#include <vector>

class KtDbDatabase;
class KtDbObject;

namespace kthost {

/// Objects that stay open between commands, as a palette or a dialog of somebody else's would keep them.
class HeldObjects {
public:
    HeldObjects() = default;
    HeldObjects(const HeldObjects&) = delete;
    HeldObjects& operator=(const HeldObjects&) = delete;

    /// Lets go of everything.
    ~HeldObjects() { releaseAll(); }

    /// Opens the object once more, an erased one too. The status is that of opening it.
    Orbx::ErrorStatus hold(KtDbObjectId id, KtDb::OpenMode mode);
    /// Closes everything, the latest first; gives the number of openings. What went with its drawing needs no
    /// closing any more, and is not counted.
    std::size_t releaseAll();

    /// Openings kept, with those that went with their drawing.
    std::size_t count() const { return openings_.size(); }

    /// The same as releaseAll for one drawing's objects, which is about to go.
    void releaseOf(const KtDbDatabase* database);

private:
    struct Opening {
        KtDbObjectId id;
        KtDbObject* object;
    };

    std::vector<Opening> openings_;
};

} // namespace kthost
