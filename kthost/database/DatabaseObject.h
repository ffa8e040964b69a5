#pragma once

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ObjectCalls.h"
#include "kthost/database/ObjectHead.h"

#include <KtDbObject.h>

namespace kthost {

/// What the objects of a drawing have in common, put below one of the seam's interfaces. Its run-time class
/// is that of the interface.
template <class Interface>
class DatabaseObject : public Interface {
public:
    KtDbObjectId objectId() const final { return head_.id(); }

    KtDbObjectId ownerId() const final { return head_.owner; }

    KtDbDatabase* database() const final { return databaseOfObject(head_.id()); }

    std::uint64_t handle() const final { return handleOf(head_.id()); }

    bool isErased() const final { return head_.erased; }

    Orbx::ErrorStatus close() final { return closeObject(head_); }

    Orbx::ErrorStatus erase(bool erasing = true) final { return eraseObject(head_.id(), erasing); }

    Orbx::ErrorStatus addReactor(KtDbObjectReactor* reactor) const final {
        return addReactorTo(head_, reactor);
    }

    Orbx::ErrorStatus removeReactor(KtDbObjectReactor* reactor) const final {
        return removeReactorFrom(head_, reactor);
    }

    Orbx::ErrorStatus getXData(const wchar_t* application, KtArray<KtDbXDataItem>& items) const final {
        return getXDataOf(head_.id(), application, items);
    }

    ObjectHead& head() const { return head_; }

private:
    static_assert(sizeof(Interface) == kHeadOffset); // nothing but the pointer to virtual functions

    mutable ObjectHead head_; // watching an object does not change it
};

} // namespace kthost
