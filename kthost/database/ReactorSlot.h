#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class KtDbObjectReactor;

namespace kthost {

/// The reactors of one object, in the order in which they were added. Most objects have none or one, so that
/// is all there is room for inside; more lie in a list of their own.
class ReactorSlot {
public:
    ReactorSlot() = default;
    ReactorSlot(const ReactorSlot&) = delete;
    ReactorSlot& operator=(const ReactorSlot&) = delete;
    ~ReactorSlot();

    /// Does nothing for one that is there already.
    void add(KtDbObjectReactor* reactor);
    /// False when it was not there.
    bool remove(KtDbObjectReactor* reactor);

    bool isEmpty() const { return value_ == 0; }

    std::vector<KtDbObjectReactor*> reactors() const;

    /// Calls `call(reactor)` for each reactor that is there now and still there when its turn comes. The
    /// calls may add and remove reactors and may end the slot's own life.
    template <typename Call>
    void forEach(Call&& call);

private:
    struct List {
        std::vector<KtDbObjectReactor*> reactors; // null where one was removed during a walk
        std::size_t walks = 0;
        bool orphaned = false; // the slot went during a walk; the last walk deletes the list
    };

    class Walk {
    public:
        explicit Walk(ReactorSlot& slot) : slot_(slot), list_(slot.list()) { ++list_->walks; }

        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;
        ~Walk();

        const List& list() const { return *list_; }

    private:
        ReactorSlot& slot_; // not to be touched once the list is orphaned
        List* list_;
    };

    static constexpr std::uintptr_t kListed = 1; // set in a pointer to a list; reactors have virtual tables

    bool isListed() const { return (value_ & kListed) != 0; }

    KtDbObjectReactor* single() const;
    List* list() const;
    void setList(List* list);
    void settle(List& kept);

    std::uintptr_t value_ = 0;
};

template <typename Call>
void ReactorSlot::forEach(Call&& call) {
    if (!isListed()) {
        if (value_ != 0) {
            call(single());
        }
        return;
    }
    const Walk walk(*this);
    const std::size_t count = walk.list().reactors.size(); // what is added meanwhile comes behind
    for (std::size_t i = 0; i < count; ++i) {
        if (KtDbObjectReactor* reactor = walk.list().reactors[i]; reactor != nullptr) {
            call(reactor);
        }
    }
}

} // namespace kthost
