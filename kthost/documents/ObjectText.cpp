#include "kthost/documents/ObjectText.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/ObjectKinds.h"
#include "kthost/reader/Utf8.h"

#include <KtRxClass.h>

#include <sstream>

namespace kthost {

TracedObject describeObject(KtDbObjectId id) {
    TracedObject object;
    if (const Stub* stub = ObjectStore::instance().find(id)) {
        object.className = classOf(stub->kind)->name();
    }
    object.handle = handleOf(id);
    object.name = recordName(id);
    return object;
}

std::string objectText(KtDbObjectId id) {
    const TracedObject object = describeObject(id);
    std::ostringstream text;
    text << toUtf8(object.className) << ' ' << std::hex << std::uppercase << object.handle;
    if (!object.name.empty()) {
        text << ' ' << toUtf8(object.name);
    }
    return text.str();
}

} // namespace kthost
