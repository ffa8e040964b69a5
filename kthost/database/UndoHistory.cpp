#include "kthost/database/UndoHistory.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/Releasing.h"
#include "kthost/database/UndoPlayer.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kthost {

namespace {

/// Set while it lives, exceptions included.
class Playing {
public:
    explicit Playing(bool& flag) : flag_(flag) { flag_ = true; }

    Playing(const Playing&) = delete;
    Playing& operator=(const Playing&) = delete;

    ~Playing() { flag_ = false; }

private:
    bool& flag_;
};

} // namespace

void UndoHistory::begin(std::wstring name) {
    if (depth_++ == 0) {
        open_ = {std::move(name), {}};
        cancelled_ = false;
    }
}

Orbx::ErrorStatus UndoHistory::end() {
    if (depth_ == 0) {
        return Orbx::eNotNow;
    }
    if (--depth_ != 0) {
        return Orbx::eOk;
    }
    const Orbx::ErrorStatus status = cancelled_ ? takeBack() : Orbx::eOk;
    if (!open_.records.empty()) {
        forgetUndone();
        done_.push_back(std::exchange(open_, {}));
        applyLimit();
    }
    releaseForgotten();
    return status;
}

Orbx::ErrorStatus UndoHistory::cancel() {
    cancelled_ = true;
    return end();
}

/// Leaves the open step empty when it could be rolled back.
Orbx::ErrorStatus UndoHistory::takeBack() {
    const Orbx::ErrorStatus status = play(open_, true);
    if (status == Orbx::eOk) {
        forget(std::exchange(open_, {}));
    }
    return status;
}

Orbx::ErrorStatus UndoHistory::undo() {
    if (depth_ != 0 || playing_) {
        return Orbx::eNotNow;
    }
    if (done_.empty()) {
        return Orbx::eNothingToUndo;
    }
    const Orbx::ErrorStatus status = play(done_.back(), true);
    if (status == Orbx::eOk) {
        undone_.push_back(std::move(done_.back()));
        done_.pop_back();
        releaseForgotten();
    }
    return status;
}

Orbx::ErrorStatus UndoHistory::redo() {
    if (depth_ != 0 || playing_) {
        return Orbx::eNotNow;
    }
    if (undone_.empty()) {
        return Orbx::eNothingToRedo;
    }
    const Orbx::ErrorStatus status = play(undone_.back(), false);
    if (status == Orbx::eOk) {
        done_.push_back(std::move(undone_.back()));
        undone_.pop_back();
        releaseForgotten();
    }
    return status;
}

Orbx::ErrorStatus UndoHistory::play(UndoStep& step, bool backwards) {
    if (const Orbx::ErrorStatus refusal = refusalToPlay(step); refusal != Orbx::eOk) {
        return refusal;
    }
    const Playing playing(playing_);
    const std::size_t count = step.records.size();
    for (std::size_t i = 0; i < count; ++i) {
        playRecord(step.records[backwards ? count - 1 - i : i], backwards);
    }
    return Orbx::eOk;
}

void UndoHistory::record(UndoRecord record) {
    if (playing_ || !database_.undoRecording()) {
        return;
    }
    if (depth_ == 0) { // otherwise when the step has ended: one that is taken back has changed nothing
        forgetUndone();
    }
    if (depth_ == 0 && done_.empty()) {
        return;
    }
    ++mentions_[concernedObject(record)];
    (depth_ != 0 ? open_ : done_.back()).records.push_back(std::move(record));
}

void UndoHistory::forget(UndoStep step) {
    for (const UndoRecord& record : step.records) {
        const auto mentioned = mentions_.find(concernedObject(record));
        if (--mentioned->second == 0) {
            forgotten_.push_back(mentioned->first);
            mentions_.erase(mentioned);
        }
    }
    dropped_.push_back(std::move(step));
}

void UndoHistory::forgetUndone() {
    for (UndoStep& step : std::exchange(undone_, {})) {
        forget(std::move(step));
    }
}

Orbx::ErrorStatus UndoHistory::discard() {
    std::size_t released = 0;
    return discard(released);
}

Orbx::ErrorStatus UndoHistory::discard(std::size_t& released) {
    released = 0;
    if (depth_ != 0 || playing_) {
        return Orbx::eNotNow;
    }
    forgetUndone();
    for (UndoStep& step : std::exchange(done_, {})) {
        forget(std::move(step));
    }
    released = releaseForgotten();
    return Orbx::eOk;
}

void UndoHistory::setLimit(std::size_t steps) {
    limit_ = steps;
    applyLimit();
    if (depth_ == 0 && !playing_) {
        releaseForgotten();
    }
}

void UndoHistory::applyLimit() {
    while (done_.size() > limit_) {
        forget(std::move(done_.front()));
        done_.pop_front();
    }
}

/// An object may have been kept by the mention of one that it owns, so its owners are looked at with it.
/// Those that still cannot go, because somebody has them open, are tried again the next time.
std::size_t UndoHistory::releaseForgotten() {
    dropped_.clear();
    std::vector<KtDbObjectId> candidates;
    for (KtDbObjectId id : std::exchange(forgotten_, {})) {
        ObjectHead* head = ObjectStore::instance().find(id);
        while (head != nullptr && head->object() != nullptr) {
            if (head->erased && !mentions_.contains(id)) {
                candidates.push_back(id);
            }
            id = head->owner;
            head = ObjectStore::instance().find(id);
        }
    }
    if (candidates.empty()) {
        return 0;
    }
    const std::size_t released = releaseObjects(database_.contents(), candidates,
                                                [this](KtDbObjectId id) { return mentions_.contains(id); });
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(forgotten_), [](KtDbObjectId id) {
        ObjectHead* head = ObjectStore::instance().find(id);
        return head != nullptr && head->object() != nullptr;
    });
    return released;
}

} // namespace kthost
