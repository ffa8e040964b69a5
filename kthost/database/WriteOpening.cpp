#include "kthost/database/WriteOpening.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Openings.h"

namespace kthost {

Orbx::ErrorStatus refusalToWrite(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || head->object() == nullptr) {
        return id.isNull()    ? Orbx::eNullObjectId
               : id.isValid() ? Orbx::eObjectReleased
                              : Orbx::eInvalidObjectId;
    }
    return refusalToOpen(*head, KtDb::kForWrite);
}

WriteOpening::WriteOpening(KtDbObjectId id)
    : id_(id),
      status_(refusalToWrite(id)),
      open_(status_ == Orbx::eOk) {
    if (open_) {
        beginOpening(*ObjectStore::instance().find(id), KtDb::kForWrite);
    }
}

WriteOpening::~WriteOpening() {
    if (open_) {
        contentsOf(id_)->sessions.erase(id_);
        ObjectStore::instance().find(id_)->writing = false;
    }
}

void WriteOpening::close() {
    if (open_) {
        open_ = false;
        // A reactor that closed what it did not open has ended this opening already.
        static_cast<void>(endOpening(id_));
    }
}

} // namespace kthost
