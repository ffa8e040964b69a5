#include "kthost/database/Releasing.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ReleasedIds.h"

#include <algorithm>
#include <unordered_set>

namespace kthost {

namespace {

using Needed = std::function<bool(KtDbObjectId)>;

template <typename Call>
void forEachOwned(KtDbObjectId owner, Call call) {
    if (const auto* record = peek<BlockTableRecord>(owner)) {
        std::for_each(record->entities().begin(), record->entities().end(), call);
        call(record->graph());
    }
    withReference(owner, [&call](const auto& reference) {
        for (std::size_t i = 0; i < reference.attributes().size(); ++i) {
            call(reference.attributes()[i]);
        }
    });
}

/// The object and all that it owns, at any depth; released ones left out.
std::vector<KtDbObjectId> withOwned(KtDbObjectId root) {
    std::vector<KtDbObjectId> found{root};
    for (std::size_t i = 0; i < found.size(); ++i) {
        forEachOwned(found[i], [&found](KtDbObjectId id) {
            if (!isReleased(id)) {
                found.push_back(id);
            }
        });
    }
    return found;
}

/// What may go, as whole trees below erased roots.
class Release {
public:
    explicit Release(const Needed& needed) : needed_(needed) {}

    void offer(KtDbObjectId root) {
        const std::vector<KtDbObjectId> tree = withOwned(root);
        if (std::none_of(tree.begin(), tree.end(), [this](KtDbObjectId id) { return mustStay(id); })) {
            going_.insert(tree.begin(), tree.end());
            if (peek<BlockTableRecord>(root) != nullptr) {
                records_.push_back(root);
            }
        }
    }

    /// A record stays while a reference to it does; with it stays what it contains, and so the records of
    /// that.
    void keepWhatIsReferredTo() {
        while (!records_.empty()) {
            const KtDbObjectId record = records_.back();
            records_.pop_back();
            if (going_.contains(record) && isReferredTo(record)) {
                keep(record);
            }
        }
    }

    std::vector<KtDbObjectId> ascending() const {
        std::vector<KtDbObjectId> ids(going_.begin(), going_.end());
        std::sort(ids.begin(), ids.end());
        return ids;
    }

private:
    bool mustStay(KtDbObjectId id) const { return ObjectStore::instance().find(id)->isOpen() || needed_(id); }

    bool stays(KtDbObjectId id) const { return !going_.contains(id); }

    bool isReferredTo(KtDbObjectId id) const {
        const ReferenceList& references = peek<BlockTableRecord>(id)->ownReferences();
        const auto anyStays = [this](const std::vector<KtDbObjectId>& ids) {
            return std::any_of(ids.begin(), ids.end(), [this](KtDbObjectId each) { return stays(each); });
        };
        return anyStays(references.living()) || anyStays(references.erased());
    }

    void keep(KtDbObjectId record) {
        for (const KtDbObjectId id : withOwned(record)) {
            going_.erase(id);
            withReference(id, [this](const auto& kept) { records_.push_back(kept.blockTableRecord()); });
        }
    }

    const Needed& needed_;
    std::unordered_set<KtDbObjectId> going_;
    std::vector<KtDbObjectId> records_; // to be looked at
};

/// Notes every list that holds the object's id.
void takeOutOfLists(DatabaseContents& contents, KtDbObjectId id) {
    const ObjectHead& head = *ObjectStore::instance().find(id);
    contents.crowded[head.owner].push_back(id);
    if (const auto* record = peek<BlockTableRecord>(id)) {
        peek<BlockTable>(head.owner)->forgetName(id, record->fields().name);
        contents.crowded[record->fields().represents].push_back(id);
    }
    withReference(id, [id](const auto& reference) {
        if (auto* definition = peek<BlockTableRecord>(reference.blockTableRecord())) {
            definition->ownReferences().touch(id);
        }
    });
}

void deleteObject(DatabaseContents& contents, KtDbObjectId id) {
    contents.xdata.erase(id);
    contents.sessions.erase(id);
    contents.erased.erase(id);
    ObjectStore::instance().release(id); // last: it may own a drawing
}

/// `gone` is ascending.
void takeOut(std::vector<KtDbObjectId>& ids, const std::vector<KtDbObjectId>& gone) {
    std::erase_if(ids, [&gone](KtDbObjectId id) { return std::binary_search(gone.begin(), gone.end(), id); });
}

void takeOutOf(KtDbObjectId id, std::vector<KtDbObjectId> gone) {
    std::sort(gone.begin(), gone.end());
    if (auto* table = peek<BlockTable>(id)) {
        takeOut(table->records(), gone);
    } else if (auto* record = peek<BlockTableRecord>(id)) {
        takeOut(record->entities(), gone);
        takeOut(record->representations(), gone);
        record->setGraph(isReleased(record->graph()) ? KtDbObjectId() : record->graph());
    } else {
        withReference(id, [](auto& reference) { reference.dropReleasedAttributes(); });
    }
}

/// Lists of objects that somebody has open wait: an iterator may stand in them.
void clearCrowded(DatabaseContents& contents) {
    std::erase_if(contents.crowded, [](const auto& entry) {
        const auto& [id, gone] = entry;
        if (!isReleased(id) && ObjectStore::instance().find(id)->isOpen()) {
            return false;
        }
        takeOutOf(id, gone);
        return true;
    });
}

} // namespace

std::size_t releaseObjects(DatabaseContents& contents, const std::vector<KtDbObjectId>& candidates,
                           const Needed& needed) {
    Release release(needed);
    for (const KtDbObjectId id : candidates) {
        if (!isReleased(id) && id.isErased()) {
            release.offer(id);
        }
    }
    release.keepWhatIsReferredTo();
    const std::vector<KtDbObjectId> going = release.ascending();
    for (const KtDbObjectId id : going) {
        setErased(id, true);
        notifyGoodbye(id);
    }
    for (const KtDbObjectId id : going) {
        takeOutOfLists(contents, id);
    }
    for (const KtDbObjectId id : going) {
        deleteObject(contents, id);
    }
    clearCrowded(contents);
    return going.size();
}

void releaseAll(DatabaseContents& contents) {
    const ObjectStore& store = ObjectStore::instance();
    const std::uint64_t last = store.lastHandle(contents.slot);
    for (std::uint64_t handle = 1; handle <= last; ++handle) {
        notifyGoodbye(store.byHandle(contents.slot, handle));
    }
    for (std::uint64_t handle = 1; handle <= last; ++handle) {
        const KtDbObjectId id = store.byHandle(contents.slot, handle);
        if (!isReleased(id)) {
            deleteObject(contents, id);
        }
    }
}

} // namespace kthost
