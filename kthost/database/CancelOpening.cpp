#include "kthost/database/CancelOpening.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/Openings.h"

namespace kthost {

namespace {

void putBack(DatabaseContents& contents, KtDbObjectId id, WriteSession& session) {
    ObjectHead& head = *ObjectStore::instance().find(id);
    if (session.stateBefore) {
        exchangeState(head, *session.stateBefore);
    }
    if (session.xdataBefore) {
        contents.xdata[id] = std::move(*session.xdataBefore);
        if (contents.xdata[id].applications.empty()) {
            contents.xdata.erase(id);
        }
    }
    if (session.wasErased != head.erased) {
        setErased(id, session.wasErased);
        notifyErased(id, session.wasErased);
    }
}

Orbx::ErrorStatus cancel(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || !head->writing || latestMode(*head) != KtDb::kForWrite) {
        return Orbx::eNotOpenForWrite;
    }
    DatabaseContents& contents = *contentsOf(id);
    if (auto session = contents.sessions.extract(id)) {
        putBack(contents, id, session.mapped());
    }
    notifyCancelled(id);
    return endOpening(id); // says that it is closed; without a session there is nothing else to say
}

} // namespace

Orbx::ErrorStatus cancelOpening(KtDbObject& object) {
    return traceCall("cancel", object.objectId(), cancel(object.objectId()));
}

} // namespace kthost
