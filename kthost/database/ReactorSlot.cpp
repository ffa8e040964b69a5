#include "kthost/database/ReactorSlot.h"

#include "kthost/database/ReactorOrigins.h"

#include <KtDbObjectReactor.h>

#include <algorithm>
#include <memory>

namespace kthost {

// The integer holds one of two pointers, told apart by its lowest bit: that is what makes the slot one word.
// NOLINTBEGIN(performance-no-int-to-ptr)
KtDbObjectReactor* ReactorSlot::single() const {
    return reinterpret_cast<KtDbObjectReactor*>(value_);
}

ReactorSlot::List* ReactorSlot::list() const {
    return reinterpret_cast<List*>(value_ & ~kListed);
}

// NOLINTEND(performance-no-int-to-ptr)

void ReactorSlot::setList(List* list) {
    value_ = reinterpret_cast<std::uintptr_t>(list) | kListed;
}

ReactorSlot::~ReactorSlot() {
    if (!isListed()) {
        if (value_ != 0) {
            forgetReactor(single());
        }
        return;
    }
    List* kept = list();
    for (const KtDbObjectReactor* reactor : kept->reactors) {
        if (reactor != nullptr) {
            forgetReactor(reactor);
        }
    }
    if (kept->walks == 0) {
        delete kept;
        return;
    }
    std::fill(kept->reactors.begin(), kept->reactors.end(), nullptr);
    kept->orphaned = true;
}

void ReactorSlot::add(KtDbObjectReactor* reactor) {
    if (value_ == 0) {
        noteReactor(reactor);
        value_ = reinterpret_cast<std::uintptr_t>(reactor);
        return;
    }
    if (!isListed()) {
        if (single() == reactor) {
            return;
        }
        auto made = std::make_unique<List>();
        made->reactors = {single(), reactor};
        noteReactor(reactor);
        setList(made.release());
        return;
    }
    std::vector<KtDbObjectReactor*>& reactors = list()->reactors;
    if (std::find(reactors.begin(), reactors.end(), reactor) == reactors.end()) {
        reactors.push_back(nullptr); // a gap stays when there is no memory for the note
        noteReactor(reactor);
        reactors.back() = reactor;
    }
}

bool ReactorSlot::remove(KtDbObjectReactor* reactor) {
    if (reactor == nullptr || value_ == 0) {
        return false;
    }
    if (!isListed()) {
        if (single() != reactor) {
            return false;
        }
        forgetReactor(reactor);
        value_ = 0;
        return true;
    }
    List& kept = *list();
    const auto place = std::find(kept.reactors.begin(), kept.reactors.end(), reactor);
    if (place == kept.reactors.end()) {
        return false;
    }
    *place = nullptr;
    forgetReactor(reactor);
    settle(kept);
    return true;
}

/// Once nobody walks the list, drops the gaps in it, and the list itself when one place does.
void ReactorSlot::settle(List& kept) {
    if (kept.walks != 0) {
        return;
    }
    kept.reactors.erase(std::remove(kept.reactors.begin(), kept.reactors.end(), nullptr),
                        kept.reactors.end());
    if (kept.reactors.size() < 2) {
        KtDbObjectReactor* last = kept.reactors.empty() ? nullptr : kept.reactors.front();
        delete &kept;
        value_ = reinterpret_cast<std::uintptr_t>(last);
    }
}

ReactorSlot::Walk::~Walk() {
    if (--list_->walks != 0) {
        return;
    }
    if (list_->orphaned) {
        delete list_;
    } else {
        slot_.settle(*list_);
    }
}

std::vector<KtDbObjectReactor*> ReactorSlot::reactors() const {
    std::vector<KtDbObjectReactor*> found;
    if (isListed()) {
        std::copy_if(list()->reactors.begin(), list()->reactors.end(), std::back_inserter(found),
                     [](const KtDbObjectReactor* reactor) { return reactor != nullptr; });
    } else if (value_ != 0) {
        found.push_back(single());
    }
    return found;
}

} // namespace kthost
