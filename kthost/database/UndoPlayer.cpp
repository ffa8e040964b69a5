#include "kthost/database/UndoPlayer.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/WriteOpening.h"

namespace kthost {

namespace {

KtDbObjectId ownerOfObject(KtDbObjectId id) {
    return ObjectStore::instance().find(id)->owner;
}

/// Opens the object, and what it lies in, changes it in between, and closes both.
template <typename Change>
void changeWithOwner(KtDbObjectId id, Change change) {
    WriteOpening owner(ownerOfObject(id));
    WriteOpening object(id);
    static_cast<void>(beginChange(ownerOfObject(id))); // refusals were looked for before
    static_cast<void>(beginChange(id));
    change();
    object.close();
    owner.close();
}

template <typename Change>
void changeAlone(KtDbObjectId id, Change change) {
    WriteOpening object(id);
    static_cast<void>(beginChange(id));
    change();
    notifyModifyUndone(id);
    object.close();
}

void play(AppendRecord& append, bool backwards) {
    changeWithOwner(append.id, [&append, backwards] {
        ObjectHead& head = *ObjectStore::instance().find(append.id);
        if (backwards) {
            append.wasErased = head.erased;
        }
        head.unappended = backwards;
        setErased(append.id, backwards || append.wasErased);
        backwards ? notifyUnappended(append.id) : notifyReappended(append.id);
    });
}

void play(const EraseRecord& erase, bool backwards) {
    const bool erased = erase.erasing != backwards;
    changeWithOwner(erase.id, [&erase, erased] {
        setErased(erase.id, erased);
        notifyErased(erase.id, erased);
        notifyModifyUndone(erase.id);
    });
}

void play(StateRecord& change, bool /*backwards*/) {
    changeAlone(change.id,
                [&change] { exchangeState(*ObjectStore::instance().find(change.id), change.state); });
}

void play(XDataRecord& change, bool /*backwards*/) {
    changeAlone(change.id, [&change] {
        static_cast<void>(beginXDataChange(change.id)); // so that closing says what changed
        auto& all = contentsOf(change.id)->xdata;
        std::swap(all[change.id], change.data);
        if (all[change.id].applications.empty()) {
            all.erase(change.id);
        }
    });
}

bool opensOwner(const UndoRecord& record) {
    return std::holds_alternative<AppendRecord>(record) || std::holds_alternative<EraseRecord>(record);
}

} // namespace

Orbx::ErrorStatus refusalToPlay(const UndoStep& step) {
    for (const UndoRecord& record : step.records) {
        const KtDbObjectId id = concernedObject(record);
        Orbx::ErrorStatus refusal = refusalToWrite(id);
        if (refusal == Orbx::eOk && opensOwner(record)) {
            refusal = refusalToWrite(ownerOfObject(id));
        }
        if (refusal != Orbx::eOk) {
            return refusal;
        }
    }
    return Orbx::eOk;
}

void playRecord(UndoRecord& record, bool backwards) {
    std::visit([backwards](auto& change) { play(change, backwards); }, record);
}

} // namespace kthost
