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

Origins& origins() {
    static auto& all = *new Origins; // never destroyed: a drawing may outlive every static
    return all;
}

} // namespace

void noteReactor(const KtDbObjectReactor* reactor) {
    Origin& origin = origins()[reactor];
    origin.virtualTable = virtualTableOf(reactor);
    ++origin.objects;
}

void forgetReactor(const KtDbObjectReactor* reactor) noexcept {
    const auto found = origins().find(reactor);
    if (--found->second.objects == 0) {
        origins().erase(found);
    }
}

const void* notedVirtualTable(const KtDbObjectReactor* reactor) {
    const auto found = origins().find(reactor);
    return found == origins().end() ? nullptr : found->second.virtualTable;
}

} // namespace kthost
