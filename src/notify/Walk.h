#pragma once

#include <iterator>

/// Walks over ordered sets that call out to code which may change the set meanwhile: add elements, remove
/// any, or remove all. Where the set has changed over a call, the walks look up the key that they remember,
/// so an element that the callee removed is replaced by the one after it. The set itself has to outlive the
/// walk.

/// Settles which element comes next before each call. An element added between the two is not reached; nor is
/// one added behind the last.
template <typename Set, typename Call>
void walkTakingNextFirst(const Set& set, Call call) {
    auto position = set.begin();
    while (position != set.end()) {
        const auto current = *position;
        const auto next = std::next(position);
        if (next == set.end()) {
            call(current);
            return;
        }
        const auto nextKey = *next;
        const auto before = set.changeStamp();
        call(current);
        position = set.changeStamp() == before ? next : set.lower_bound(nextKey);
    }
}

/// Settles which element comes next after each call. Every element added behind the current one is reached.
template <typename Set, typename Call>
void walkTakingNextAfter(const Set& set, Call call) {
    auto position = set.begin();
    while (position != set.end()) {
        const auto current = *position;
        const auto before = set.changeStamp();
        call(current);
        position = set.changeStamp() == before ? std::next(position) : set.upper_bound(current);
    }
}
