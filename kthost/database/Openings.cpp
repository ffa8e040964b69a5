#include "kthost/database/Openings.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Notifications.h"
#include "kthost/database/ObjectStore.h"

#include <limits>
#include <utility>

namespace kthost {

namespace {

Orbx::ErrorStatus refusalToWrite(const Stub& stub) {
    if (stub.writing) {
        return Orbx::eWasOpenForWrite;
    }
    if (stub.readers != 0) {
        return Orbx::eWasOpenForRead;
    }
    return stub.notifiers != 0 ? Orbx::eWasOpenForNotify : Orbx::eOk;
}

Orbx::ErrorStatus refusalToRead(const Stub& stub) {
    if (stub.writing) {
        return Orbx::eWasOpenForWrite;
    }
    return stub.readers == std::numeric_limits<std::uint8_t>::max() ? Orbx::eTooManyReaders : Orbx::eOk;
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
    explicit WritingEnds(Stub& stub) : stub_(stub) {}

    WritingEnds(const WritingEnds&) = delete;
    WritingEnds& operator=(const WritingEnds&) = delete;

    ~WritingEnds() { stub_.writing = false; }

private:
    Stub& stub_;
};

void endWriting(KtDbObjectId id, Stub& stub) {
    {
        const WritingEnds ends(stub);
        DatabaseContents& contents = *contentsOf(id);
        if (auto session = contents.sessions.extract(id)) {
            endChanges(contents, id, stub.erased != 0, std::move(session.mapped()));
        }
    }
    notifyObjectClosed(id);
}

} // namespace

Orbx::ErrorStatus refusalToOpen(const Stub& stub, KtDb::OpenMode mode) {
    if (mode == KtDb::kForWrite) {
        return refusalToWrite(stub);
    }
    if (mode == KtDb::kForRead) {
        return refusalToRead(stub);
    }
    const bool full = stub.notifiers == std::numeric_limits<std::uint16_t>::max();
    return full ? Orbx::eTooManyReaders : Orbx::eOk;
}

void beginOpening(Stub& stub, KtDb::OpenMode mode) {
    const bool forNotify = mode == KtDb::kForNotify;
    stub.openings = static_cast<std::uint16_t>((std::uint32_t{stub.openings} << 1U) | (forNotify ? 1U : 0U));
    if (forNotify) {
        ++stub.notifiers;
    } else if (mode == KtDb::kForRead) {
        ++stub.readers;
    } else {
        stub.writing = true;
    }
}

KtDb::OpenMode latestMode(const Stub& stub) {
    const KtDb::OpenMode other = stub.writing ? KtDb::kForWrite : KtDb::kForRead;
    const bool noOther = !stub.writing && stub.readers == 0;
    // Older openings than the last 16 are taken for one or the other, whichever there is.
    return noOther || ((stub.openings & 1U) != 0 && stub.notifiers != 0) ? KtDb::kForNotify : other;
}

Orbx::ErrorStatus endOpening(KtDbObjectId id) {
    Stub* stub = ObjectStore::instance().find(id);
    if (stub == nullptr || !stub->isOpen()) {
        return Orbx::eNotOpen;
    }
    const KtDb::OpenMode mode = latestMode(*stub);
    stub->openings = static_cast<std::uint16_t>(std::uint32_t{stub->openings} >> 1U);
    if (mode == KtDb::kForNotify) {
        --stub->notifiers;
    } else if (mode == KtDb::kForRead) {
        --stub->readers;
    } else {
        endWriting(id, *stub);
    }
    return Orbx::eOk;
}

} // namespace kthost
