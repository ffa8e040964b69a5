#include <KtDbObject.h>
#include <KtRxClass.h>

#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/ObjectKinds.h"
#include "kthost/database/ObjectStore.h"
#include "kthost/database/Openings.h"

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToReach(KtDbObjectId id, ObjectHead* head, bool openErased) {
    if (id.isNull()) {
        return Orbx::eNullObjectId;
    }
    if (head == nullptr) {
        return id.isValid() ? Orbx::eObjectReleased : Orbx::eInvalidObjectId;
    }
    if (head->object() == nullptr) {
        return Orbx::eObjectReleased;
    }
    return head->erased && !openErased ? Orbx::eWasErased : Orbx::eOk;
}

bool isOfClass(const ObjectHead& head, const KtRxClass* description) {
    const KtRxClass* own = classOf(head.kind);
    return own == description || own->isDerivedFrom(description);
}

Orbx::ErrorStatus open(KtDbObject*& object, KtDbObjectId id, const KtRxClass* description,
                       KtDb::OpenMode mode, bool openErased) {
    if (const Orbx::ErrorStatus fault = Faults::instance().next(HostCall::openObject); fault != Orbx::eOk) {
        return fault;
    }
    ObjectHead* head = ObjectStore::instance().find(id);
    if (const Orbx::ErrorStatus refusal = refusalToReach(id, head, openErased); refusal != Orbx::eOk) {
        return refusal;
    }
    if (description == nullptr || !isOfClass(*head, description)) {
        return Orbx::eNotThatKindOfClass;
    }
    if (const Orbx::ErrorStatus refusal = refusalToOpen(*head, mode); refusal != Orbx::eOk) {
        return refusal;
    }
    beginOpening(*head, mode);
    object = head->object();
    return Orbx::eOk;
}

const char* nameOf(KtDb::OpenMode mode) {
    switch (mode) {
    case KtDb::kForRead:
        return "read";
    case KtDb::kForWrite:
        return "write";
    case KtDb::kForNotify:
        break;
    }
    return "notify";
}

} // namespace

} // namespace kthost

Orbx::ErrorStatus ktdbOpenObject(KtDbObject*& object, KtDbObjectId id, const KtRxClass* description,
                                 KtDb::OpenMode mode, bool openErased) {
    object = nullptr;
    const Orbx::ErrorStatus status = kthost::open(object, id, description, mode, openErased);
    if (kthost::tracing()) {
        kthost::TraceLine("open")
            .field("id", id)
            .field("mode", kthost::nameOf(mode))
            .field("openErased", openErased)
            .field("status", status);
    }
    return status;
}
