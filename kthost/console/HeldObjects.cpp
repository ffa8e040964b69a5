#include "kthost/console/HeldObjects.h"

#include <KtDbObject.h>

#include <utility>

namespace kthost {

namespace {

/// False for an object that its drawing took along.
bool closeIfThere(KtDbObjectId id, KtDbObject* object) {
    return id.database() != nullptr && object->close() == Orbx::eOk;
}

} // namespace

Orbx::ErrorStatus HeldObjects::hold(KtDbObjectId id, KtDb::OpenMode mode) {
    openings_.reserve(openings_.size() + 1); // nothing may go wrong once it is open
    KtDbObject* object = nullptr;
    const Orbx::ErrorStatus status = ktdbOpenObject(object, id, KtDbObject::desc(), mode, true);
    if (status == Orbx::eOk) {
        openings_.push_back({id, object});
    }
    return status;
}

std::size_t HeldObjects::releaseAll() {
    std::size_t count = 0;
    while (!openings_.empty()) {
        const Opening opening = openings_.back();
        openings_.pop_back(); // closing tells reactors
        count += closeIfThere(opening.id, opening.object) ? 1U : 0U;
    }
    return count;
}

void HeldObjects::releaseOf(const KtDbDatabase* database) {
    std::vector<Opening> others;
    while (!openings_.empty()) {
        const Opening opening = openings_.back();
        openings_.pop_back();
        if (opening.id.database() != database) {
            others.push_back(opening);
        } else {
            closeIfThere(opening.id, opening.object);
        }
    }
    openings_.assign(others.rbegin(), others.rend());
}

} // namespace kthost
