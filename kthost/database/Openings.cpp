#include "kthost/database/Openings.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ObjectStore.h"

#include <limits>
#include <utility>

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToWrite(const ObjectHead& head) {
    if (head.writing) {
        return Orbx::eWasOpenForWrite;
    }
    if (head.readers != 0) {
        return Orbx::eWasOpenForRead;
    }
    return head.notifiers != 0 ? Orbx::eWasOpenForNotify : Orbx::eOk;
}

Orbx::ErrorStatus refusalToRead(const ObjectHead& head) {
    if (head.writing) {
        return Orbx::eWasOpenForWrite;
    }
    return head.readers == std::numeric_limits<std::uint8_t>::max() ? Orbx::eTooManyReaders : Orbx::eOk;
}

void keepForUndo(DatabaseContents& contents, KtDbObjectId id, bool erased, WriteSession session) {
    if (session.stateBefore) {
        contents.history.record(StateRecord{id, std::move(*session.stateBefore)});
    }
    if (session.xdataBefore) {
        contents.history.record(XDataRecord{id, std::move(*session.xdataBefore)});
    }
    if (session.wasErased != erased) {
        contents.history.record(EraseRecord{id, erased});
    }
}

void endChanges(DatabaseContents& contents, KtDbObjectId id, bool erased, WriteSession session) {
    const bool xdataChanged = session.xdataBefore.has_value();
    keepForUndo(contents, id, erased, std::move(session));
    notifyModified(id);
    if (xdataChanged) {
        notifyModifiedXData(id);
    }
    notifySubObjectModified(id);
}

/// The opening ends even when a reactor throws.
class WritingEnds {
public:
    explicit WritingEnds(ObjectHead& head) : head_(head) {}

    WritingEnds(const WritingEnds&) = delete;
    WritingEnds& operator=(const WritingEnds&) = delete;

    ~WritingEnds() { head_.writing = false; }

private:
    ObjectHead& head_;
};

void endWriting(ObjectHead& head) {
    const KtDbObjectId id = head.id();
    {
        const WritingEnds ends(head);
        DatabaseContents& contents = *contentsOf(id);
        if (auto session = contents.sessions.extract(id)) {
            endChanges(contents, id, head.erased, std::move(session.mapped()));
        }
    }
    notifyObjectClosed(id);
}

} // namespace

Orbx::ErrorStatus refusalToOpen(const ObjectHead& head, KtDb::OpenMode mode) {
    if (mode == KtDb::kForWrite) {
        return refusalToWrite(head);
    }
    if (mode == KtDb::kForRead) {
        return refusalToRead(head);
    }
    const bool full = head.notifiers == std::numeric_limits<std::uint16_t>::max();
    return full ? Orbx::eTooManyReaders : Orbx::eOk;
}

void beginOpening(ObjectHead& head, KtDb::OpenMode mode) {
    const bool forNotify = mode == KtDb::kForNotify;
    head.openings = static_cast<std::uint16_t>((std::uint32_t{head.openings} << 1U) | (forNotify ? 1U : 0U));
    if (forNotify) {
        ++head.notifiers;
    } else if (mode == KtDb::kForRead) {
        ++head.readers;
    } else {
        head.writing = true;
    }
}

KtDb::OpenMode latestMode(const ObjectHead& head) {
    const KtDb::OpenMode other = head.writing ? KtDb::kForWrite : KtDb::kForRead;
    const bool noOther = !head.writing && head.readers == 0;
    // Older openings than the last 16 are taken for one or the other, whichever there is.
    return noOther || ((head.openings & 1U) != 0 && head.notifiers != 0) ? KtDb::kForNotify : other;
}

Orbx::ErrorStatus endOpening(ObjectHead& head) {
    if (!head.isOpen()) {
        return Orbx::eNotOpen;
    }
    const KtDb::OpenMode mode = latestMode(head);
    head.openings = static_cast<std::uint16_t>(std::uint32_t{head.openings} >> 1U);
    if (mode == KtDb::kForNotify) {
        --head.notifiers;
    } else if (mode == KtDb::kForRead) {
        --head.readers;
    } else {
        endWriting(head);
    }
    return Orbx::eOk;
}

Orbx::ErrorStatus endOpening(KtDbObjectId id) {
    ObjectHead* head = ObjectStore::instance().find(id);
    return head == nullptr ? Orbx::eNotOpen : endOpening(*head);
}

} // namespace kthost
