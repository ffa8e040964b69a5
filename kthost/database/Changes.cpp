#include "kthost/database/Changes.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Nesting.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ObjectStore.h"

namespace kthost {

namespace {

/// Null when the object is not open for write, or was closed by a reactor that heard of the change.
WriteSession* announcedSession(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    if (head == nullptr || !head->writing) {
        return nullptr;
    }
    DatabaseContents& contents = *contentsOf(id);
    if (const auto present = contents.sessions.find(id); present != contents.sessions.end()) {
        return &present->second;
    }
    contents.sessions[id].wasErased = head->erased;
    notifyOpenedForModify(id);
    const auto announced = contents.sessions.find(id);
    return announced == contents.sessions.end() ? nullptr : &announced->second;
}

} // namespace

Orbx::ErrorStatus beginChange(KtDbObjectId object) {
    return object.isNull() || announcedSession(object) != nullptr ? Orbx::eOk : Orbx::eNotOpenForWrite;
}

Orbx::ErrorStatus beginStateChange(KtDbObjectId object) {
    if (object.isNull()) {
        return Orbx::eOk;
    }
    WriteSession* session = announcedSession(object);
    if (session == nullptr) {
        return Orbx::eNotOpenForWrite;
    }
    if (!session->stateBefore) {
        session->stateBefore = stateOf(*ObjectStore::instance().find(object));
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus beginXDataChange(KtDbObjectId object) {
    WriteSession* session = announcedSession(object);
    if (session == nullptr) {
        return Orbx::eNotOpenForWrite;
    }
    if (!session->xdataBefore) {
        const auto& xdata = contentsOf(object)->xdata;
        const auto present = xdata.find(object);
        session->xdataBefore = present == xdata.end() ? XData() : present->second;
    }
    return Orbx::eOk;
}

void setErased(KtDbObjectId object, bool erased) {
    ObjectHead& head = *ObjectStore::instance().find(object);
    if (head.erased == erased) {
        return;
    }
    head.erased = erased;
    if (erased) {
        contentsOf(object)->erased.insert(object);
    } else {
        contentsOf(object)->erased.erase(object);
    }
    withReference(object, [&](auto& reference) {
        countPlacement(reference.blockTableRecord(), head.owner, erased ? -1 : 1);
        if (auto* definition = peek<BlockTableRecord>(reference.blockTableRecord())) {
            definition->ownReferences().touch(object);
        }
    });
}

} // namespace kthost
