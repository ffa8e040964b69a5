#include "kthost/database/ObjectCalls.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseTrace.h"
#include "kthost/database/Erasing.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ObjectHead.h"
#include "kthost/database/Openings.h"

#include <algorithm>

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToWatch(const ObjectHead& head, KtDbObjectReactor* reactor) {
    if (reactor == nullptr) {
        return Orbx::eInvalidInput;
    }
    if (!head.stored) {
        return Orbx::eNotInDatabase;
    }
    return head.isOpen() ? Orbx::eOk : Orbx::eNotOpen;
}

Orbx::ErrorStatus traceReactor(const char* event, const ObjectHead& head, KtDbObjectReactor* reactor,
                               Orbx::ErrorStatus status) {
    if (tracing()) {
        TraceLine(event).field("id", head.id()).address("reactor", reactor).field("status", status);
    }
    return status;
}

const XData::Application* findApplication(KtDbObjectId id, const wchar_t* name) {
    const DatabaseContents* contents = contentsOf(id);
    if (contents == nullptr || name == nullptr) {
        return nullptr;
    }
    const auto data = contents->xdata.find(id);
    if (data == contents->xdata.end()) {
        return nullptr;
    }
    const auto& all = data->second.applications;
    const auto found = std::find_if(all.begin(), all.end(),
                                    [name](const auto& application) { return application.name == name; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

KtDbDatabase* databaseOfObject(KtDbObjectId id) {
    return ObjectStore::instance().databaseOf(id);
}

Orbx::ErrorStatus closeObject(ObjectHead& head) {
    if (tracing()) {
        TraceLine("close").field("id", head.id()); // before what closing sends
    }
    return head.stored ? endOpening(head) : Orbx::eNotInDatabase;
}

Orbx::ErrorStatus eraseObject(KtDbObjectId id, bool erasing) {
    return traceCall(erasing ? "erase" : "restore", id,
                     id.isNull() ? Orbx::eNotInDatabase : changeErased(id, erasing));
}

Orbx::ErrorStatus addReactorTo(ObjectHead& head, KtDbObjectReactor* reactor) {
    Orbx::ErrorStatus status = Faults::instance().next(HostCall::addReactor);
    status = status == Orbx::eOk ? refusalToWatch(head, reactor) : status;
    if (status == Orbx::eOk) {
        head.reactors.add(reactor);
    }
    return traceReactor("addReactor", head, reactor, status);
}

Orbx::ErrorStatus removeReactorFrom(ObjectHead& head, KtDbObjectReactor* reactor) {
    Orbx::ErrorStatus status = Faults::instance().next(HostCall::removeReactor);
    status = status == Orbx::eOk ? refusalToWatch(head, reactor) : status;
    if (status == Orbx::eOk && !head.reactors.remove(reactor)) {
        status = Orbx::eKeyNotFound;
    }
    return traceReactor("removeReactor", head, reactor, status);
}

Orbx::ErrorStatus getXDataOf(KtDbObjectId id, const wchar_t* application, KtArray<KtDbXDataItem>& items) {
    const Orbx::ErrorStatus fault = Faults::instance().next(HostCall::getXData);
    if (fault != Orbx::eOk) {
        return fault;
    }
    const XData::Application* found = findApplication(id, application);
    if (found == nullptr) {
        return Orbx::eKeyNotFound;
    }
    for (const XDataValue& value : found->values) {
        items.append({value.kind, value.integer, value.text.c_str()});
    }
    return Orbx::eOk;
}

} // namespace kthost
