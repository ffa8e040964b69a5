#include "kthost/database/ReactorOrigins.h"

#include "kthost/runtime/CodeOrigin.h"

#include <cstddef>
#include <unordered_map>

namespace kthost {

namespace {

struct Origin {
    const void* virtualTable = nullptr;
    std::size_t objects = 0;
};

using Origins = std::unordered_map<const KtDbObjectReactor*, Origin>;

struct Notes {
    Origins all;
    Origins::value_type* last = nullptr; // a module puts the same reactor on many objects in a row
};

Notes& notes() {
    static auto& kept = *new Notes; // never destroyed: a drawing may outlive every static
    return kept;
}

/// Made when there is none.
Origin& originOf(const KtDbObjectReactor* reactor) {
    Notes& kept = notes();
    if (kept.last == nullptr || kept.last->first != reactor) {
        kept.last = &*kept.all.try_emplace(reactor).first;
    }
    return kept.last->second;
}

} // namespace

void noteReactor(const KtDbObjectReactor* reactor) {
    Origin& origin = originOf(reactor);
    origin.virtualTable = virtualTableOf(reactor);
    ++origin.objects;
}

void forgetReactor(const KtDbObjectReactor* reactor) noexcept {
    if (--originOf(reactor).objects == 0) {
        notes().last = nullptr;
        notes().all.erase(reactor);
    }
}

const void* notedVirtualTable(const KtDbObjectReactor* reactor) {
    const auto found = notes().all.find(reactor);
    return found == notes().all.end() ? nullptr : found->second.virtualTable;
}

} // namespace kthost
