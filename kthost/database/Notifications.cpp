#include "kthost/database/Notifications.h"

#include "kthost/audit/Trace.h"
#include "kthost/database/ObjectHead.h"
#include "kthost/database/ObjectKinds.h"
#include "kthost/database/ObjectStore.h"

#include <KtDbObjectReactor.h>

namespace kthost {

namespace {

/// Keeps the object open for notify while its reactors are called.
class NotifyOpening {
public:
    explicit NotifyOpening(KtDbObjectId id) : id_(id) { ++ObjectStore::instance().find(id)->notifiers; }

    NotifyOpening(const NotifyOpening&) = delete;
    NotifyOpening& operator=(const NotifyOpening&) = delete;

    ~NotifyOpening() {
        // The reactor may have ended more openings than it began.
        if (ObjectHead* head = ObjectStore::instance().find(id_); head != nullptr && head->notifiers != 0) {
            --head->notifiers;
        }
    }

private:
    KtDbObjectId id_;
};

void traceNotification(const char* name, KtDbObjectId id, KtDbObjectId other, KtDbObjectReactor* reactor) {
    TraceLine line("notify");
    line.field("notification", name).field("id", id);
    if (!other.isNull()) {
        line.field("other", other);
    }
    line.address("reactor", reactor);
}

/// Null when the object has no reactors.
ReactorSlot* reactorsOf(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || head->object() == nullptr || head->reactors.isEmpty()) {
        return nullptr;
    }
    return &head->reactors;
}

template <typename Call>
void send(const char* name, KtDbObjectId id, KtDbObjectId other, ReactorSlot& reactors, Call call) {
    reactors.forEach([&](KtDbObjectReactor* reactor) {
        if (tracing()) {
            traceNotification(name, id, other, reactor);
        }
        call(*reactor);
    });
}

template <typename Call>
void notify(const char* name, KtDbObjectId id, KtDbObjectId other, Call call) {
    if (ReactorSlot* reactors = reactorsOf(id)) {
        const NotifyOpening opening(id);
        const KtDbObject* object = ObjectStore::instance().find(id)->object();
        send(name, id, other, *reactors, [&](KtDbObjectReactor& reactor) { call(reactor, object); });
    }
}

KtDbObject* objectOf(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    return head == nullptr ? nullptr : head->object();
}

KtDbObjectId ownerOfObject(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    return head == nullptr ? KtDbObjectId() : head->owner;
}

} // namespace

void notifyCancelled(KtDbObjectId id) {
    notify("cancelled", id, {}, [](auto& reactor, auto* object) { reactor.cancelled(object); });
}

void notifyCopied(KtDbObjectId id, KtDbObjectId copy) {
    notify("copied", id, copy,
           [copy](auto& reactor, auto* object) { reactor.copied(object, objectOf(copy)); });
}

void notifyErased(KtDbObjectId id, bool erasing) {
    notify(erasing ? "erased" : "unerased", id, {},
           [erasing](auto& reactor, auto* object) { reactor.erased(object, erasing); });
}

void notifyGoodbye(KtDbObjectId id) {
    notify("goodbye", id, {}, [](auto& reactor, auto* object) { reactor.goodbye(object); });
}

void notifyOpenedForModify(KtDbObjectId id) {
    notify("openedForModify", id, {}, [](auto& reactor, auto* object) { reactor.openedForModify(object); });
}

void notifyModified(KtDbObjectId id) {
    notify("modified", id, {}, [](auto& reactor, auto* object) { reactor.modified(object); });
}

void notifySubObjectModified(KtDbObjectId id) {
    notify("subObjectModified", ownerOfObject(id), id,
           [id](auto& reactor, auto* owner) { reactor.subObjectModified(owner, objectOf(id)); });
}

void notifyModifyUndone(KtDbObjectId id) {
    notify("modifyUndone", id, {}, [](auto& reactor, auto* object) { reactor.modifyUndone(object); });
}

void notifyModifiedXData(KtDbObjectId id) {
    notify("modifiedXData", id, {}, [](auto& reactor, auto* object) { reactor.modifiedXData(object); });
}

void notifyUnappended(KtDbObjectId id) {
    notify("unappended", id, {}, [](auto& reactor, auto* object) { reactor.unappended(object); });
}

void notifyReappended(KtDbObjectId id) {
    notify("reappended", id, {}, [](auto& reactor, auto* object) { reactor.reappended(object); });
}

void notifyObjectClosed(KtDbObjectId id) {
    if (ReactorSlot* reactors = reactorsOf(id)) {
        send("objectClosed", id, {}, *reactors, [id](auto& reactor) { reactor.objectClosed(id); });
    }
}

} // namespace kthost
