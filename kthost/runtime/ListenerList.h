#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kthost {

/// Listeners in the order of their registration, each held once and none owned. They may come and go while
/// the list is being walked: one that is removed is not visited any more, one that is added is visited from
/// the next walk on, also when it takes the address of one that has just gone. `Note` is what is remembered
/// beside each, for reports about a listener that may no longer be asked.
template <typename Listener, typename Note>
class ListenerList {
public:
    struct Entry {
        Listener* listener; // null once removed under a walk
        Note note;
    };

    /// False, and nothing changed, when it is there already.
    bool add(Listener* listener, Note note) {
        if (find(listener) != entries_.end()) {
            return false;
        }
        entries_.push_back({listener, std::move(note)});
        return true;
    }

    /// False when it is not there.
    bool remove(const Listener* listener) {
        const auto entry = find(listener);
        if (entry == entries_.end()) {
            return false;
        }
        entry->listener = nullptr;
        compact();
        return true;
    }

    /// Calls `visit(listener)` until one gives true; says whether one did.
    template <typename Visit>
    bool visitUntil(Visit&& visit) {
        const Walk walk(*this);
        const std::size_t count = entries_.size(); // entries are only appended while a walk is under way
        for (std::size_t i = 0; i < count; ++i) {
            if (entries_[i].listener != nullptr && visit(entries_[i].listener)) {
                return true;
            }
        }
        return false;
    }

    /// Calls `look(listener, note)` for each. `look` must not change the list.
    template <typename Look>
    void inspect(Look&& look) const {
        for (const Entry& entry : entries_) {
            if (entry.listener != nullptr) {
                look(entry.listener, entry.note);
            }
        }
    }

    /// Drops those for which `leaves(note)` is true, without calling them.
    template <typename Leaves>
    void removeWhere(Leaves&& leaves) {
        for (Entry& entry : entries_) {
            if (leaves(entry.note)) {
                entry.listener = nullptr;
            }
        }
        compact();
    }

private:
    class Walk {
    public:
        explicit Walk(ListenerList& list) : list_(list) { ++list_.walks_; }

        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

        ~Walk() {
            --list_.walks_;
            list_.compact();
        }

    private:
        ListenerList& list_;
    };

    auto find(const Listener* listener) {
        return std::find_if(entries_.begin(), entries_.end(),
                            [listener](const Entry& entry) { return entry.listener == listener; });
    }

    void compact() {
        if (walks_ == 0) {
            std::erase_if(entries_, [](const Entry& entry) { return entry.listener == nullptr; });
        }
    }

    std::vector<Entry> entries_;
    int walks_ = 0;
};

} // namespace kthost
