// What the block table monitor does at idle time: bring its picture up to date, carry changes down, call the
// clients.

#include "blocks/KtDxBlocks.h"

#include <algorithm>
#include <exception>
#include <new>
#include <tuple>

namespace {

/// One look at the monitors serves every changed block.
class KeptNesting {
public:
    KeptNesting(BlockNesting& nesting, const KtDxBlocks::BlockMonitors& monitors) : nesting_(nesting) {
        nesting_.update(monitors);
        nesting_.keep(true);
    }

    KeptNesting(const KeptNesting&) = delete;
    KeptNesting& operator=(const KeptNesting&) = delete;

    ~KeptNesting() { nesting_.keep(false); }

private:
    BlockNesting& nesting_;
};

} // namespace

void KtDxBlocks::timerElapsed() {
    update(false, true);
}

void KtDxBlocks::update(bool force, bool notify) {
    if (!force && (!isRescanNeeded() || !isEnabled())) {
        return;
    }
    std::ignore = scanBlockTable(); // what was found is worth propagating even if the scan stopped short
    propagateChanges();
    if (notify) {
        notifyBlockReferenceMonitors();
    }
}

void KtDxBlocks::propagateChanges() {
    if (!hasPendingChanges()) {
        return;
    }
    KtDbObjectIdSet nested;
    if (collectNestedInChanged(nested) == Orbx::eOk) {
        markChanged(nested);
    } else if (!hasEmptyEntry()) {
        markAllChanged(); // no memory: rather a call too many than one too few
    }
}

/// eMissing at an empty entry, and when there is no memory.
Orbx::ErrorStatus KtDxBlocks::collectNestedInChanged(KtDbObjectIdSet& nested) {
    if (hasEmptyEntry()) {
        return Orbx::eMissing;
    }
    try {
        const KeptNesting kept(nesting_, blockMonitors_);
        KtDbObjectIdSet visited; // shared: what one changed block has led to, the next need not follow again
        std::size_t left = marks_.changed;
        for (auto entry = blockMonitors_.begin(); entry != blockMonitors_.end() && left != 0; ++entry) {
            const auto [key, monitor] = *entry; // a copy: it moves when others come or go
            if (monitor == nullptr) {
                return Orbx::eMissing;
            }
            if (!monitor->isChanged()) {
                continue;
            }
            const KtDbObjectId block = monitor->blockId();
            left -= key == block ? 1U : 0U; // once, whatever other keys reach it
            if (const Orbx::ErrorStatus status = collectNestedBlocks(block, true, nested, visited);
                status != Orbx::eOk) {
                return status;
            }
        }
    } catch (const std::bad_alloc&) {
        return Orbx::eMissing;
    }
    return hasEmptyEntry() ? Orbx::eMissing : Orbx::eOk; // also behind the last that was asked
}

bool KtDxBlocks::hasEmptyEntry() {
    if (emptyEntryStamp_ != blockMonitors_.changeStamp()) {
        hasEmptyEntry_ = std::any_of(blockMonitors_.begin(), blockMonitors_.end(),
                                     [](const auto& entry) { return entry.second == nullptr; });
        emptyEntryStamp_ = blockMonitors_.changeStamp();
    }
    return hasEmptyEntry_;
}

void KtDxBlocks::markChanged(const KtDbObjectIdSet& blocks) {
    for (const KtDbObjectId id : blocks) {
        const auto entry = blockMonitors_.find(id);
        if (entry == blockMonitors_.end()) {
            continue;
        }
        if (entry->second == nullptr) {
            return;
        }
        entry->second->setChanged(true);
    }
}

void KtDxBlocks::markAllChanged() {
    for (const auto& [key, monitor] : blockMonitors_) {
        if (monitor != nullptr) {
            monitor->setChanged(true);
        }
    }
}

void KtDxBlocks::notifyBlockReferenceMonitors() {
    if (!hasPendingChanges() || hasEmptyEntry()) {
        return;
    }
    KtDxCallbackSet
        callbacks; // gathered before any is called: what a callback attaches or detaches counts next time
    try {
        takeCallbacksOfChanged(callbacks);
    } catch (const std::bad_alloc&) {
        markAllChanged(); // whose marks are gone cannot be told any more
        setRescanNeeded(true);
        return;
    }
    const std::exception_ptr thrown = callEach(callbacks);
    setPendingChanges(false);
    if (thrown != nullptr) {
        std::rethrow_exception(thrown);
    }
}

/// Clears the marks of the changed blocks.
void KtDxBlocks::takeCallbacksOfChanged(KtDxCallbackSet& callbacks) {
    for (auto entry = blockMonitors_.begin(); entry != blockMonitors_.end() && marks_.changed != 0; ++entry) {
        KtDxBlock& monitor = *entry->second;
        if (monitor.isChanged()) {
            monitor.setChanged(false);
            callbacks.insert(monitor.callbacks()->begin(), monitor.callbacks()->end());
        }
    }
}

/// What the first callback that threw has thrown. The others are called all the same: their marks are gone,
/// so this is their only call for what has changed.
std::exception_ptr KtDxBlocks::callEach(const KtDxCallbackSet& callbacks) {
    std::exception_ptr thrown;
    for (const KtRxCallback callback : callbacks) {
        try {
            ktrxCall(callback);
        } catch (...) {
            thrown = thrown == nullptr ? std::current_exception() : thrown;
        }
    }
    return thrown;
}
