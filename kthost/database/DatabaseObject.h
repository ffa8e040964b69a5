#pragma once

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ObjectCalls.h"
#include "kthost/database/ObjectHead.h"

#include <KtDbObject.h>

namespace kthost {

/// What the objects of a drawing have in common, put below one of the seam's interfaces. One virtual table,
/// and two words of members. Its run-time class is that of the interface.
template <class Interface>
class DatabaseObject : public Interface {
public:
    KtDbObjectId objectId() const final { return head_.id; }

    KtDbObjectId ownerId() const final { return ownerOf(head_.id); }

    KtDbDatabase* database() const final { return databaseOfObject(head_.id); }

    std::uint64_t handle() const final { return handleOf(head_.id); }

    bool isErased() const final { return head_.id.isErased(); }

    Orbx::ErrorStatus close() final { return closeObject(head_.id); }

    Orbx::ErrorStatus erase(bool erasing = true) final { return eraseObject(head_.id, erasing); }

    Orbx::ErrorStatus addReactor(KtDbObjectReactor* reactor) const final {
        return addReactorTo(head_, reactor);
    }

    Orbx::ErrorStatus removeReactor(KtDbObjectReactor* reactor) const final {
        return removeReactorFrom(head_, reactor);
    }

    Orbx::ErrorStatus getXData(const wchar_t* application, KtArray<KtDbXDataItem>& items) const final {
        return getXDataOf(head_.id, application, items);
    }

    ObjectHead& head() const { return head_; }

private:
    mutable ObjectHead head_; // watching an object does not change it
};

} // namespace kthost
