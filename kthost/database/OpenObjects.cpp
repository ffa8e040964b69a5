#include "kthost/database/OpenObjects.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/ReactorOrigins.h"
#include "kthost/database/ReleasedIds.h"

#include <KtRxClass.h>

#include <algorithm>

namespace kthost {

namespace {

template <typename Call>
void forEachObject(Call call) {
    ObjectStore& store = ObjectStore::instance();
    for (std::size_t slot = 0; slot < store.databaseCount(); ++slot) {
        if (store.databaseAt(slot) == nullptr) {
            continue;
        }
        const auto number = static_cast<std::uint32_t>(slot);
        for (std::uint64_t handle = 1; handle <= store.lastHandle(number); ++handle) {
            const KtDbObjectId id = store.byHandle(number, handle);
            if (!isReleased(id)) {
                call(id, handle, *store.find(id));
            }
        }
    }
}

template <class Finding>
void sortById(std::vector<Finding>& findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& left, const Finding& right) { return left.id < right.id; });
}

} // namespace

std::vector<OpenObject> openObjects() {
    std::vector<OpenObject> found;
    forEachObject([&found](KtDbObjectId id, std::uint64_t handle, const ObjectHead& head) {
        const auto add = [&](KtDb::OpenMode mode, std::uint32_t count) {
            if (count != 0) {
                found.push_back({id, classOf(head.kind)->name(), handle, mode, count});
            }
        };
        add(KtDb::kForRead, head.readers);
        add(KtDb::kForWrite, head.writing ? 1 : 0);
        add(KtDb::kForNotify, head.notifiers);
    });
    sortById(found);
    return found;
}

std::vector<AttachedReactor> attachedReactors() {
    std::vector<AttachedReactor> found;
    forEachObject([&found](KtDbObjectId id, std::uint64_t handle, const ObjectHead& head) {
        for (KtDbObjectReactor* reactor : head.reactors.reactors()) {
            found.push_back({id, classOf(head.kind)->name(), handle, reactor, notedVirtualTable(reactor)});
        }
    });
    sortById(found);
    return found;
}

} // namespace kthost
