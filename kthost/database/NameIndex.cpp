#include "kthost/database/NameIndex.h"

#include <algorithm>

namespace kthost {

namespace {

std::wstring folded(std::wstring_view name) {
    std::wstring lower(name);
    for (wchar_t& letter : lower) {
        if (letter >= L'A' && letter <= L'Z') {
            letter = static_cast<wchar_t>(letter - L'A' + L'a');
        }
    }
    return lower;
}

} // namespace

void NameIndex::add(std::wstring_view name, KtDbObjectId id) {
    ids_[folded(name)].push_back(id);
}

void NameIndex::remove(std::wstring_view name, KtDbObjectId id) {
    const auto entry = ids_.find(folded(name));
    if (entry == ids_.end()) {
        return;
    }
    std::vector<KtDbObjectId>& ids = entry->second;
    ids.erase(std::remove(ids.begin(), ids.end(), id), ids.end());
    if (ids.empty()) {
        ids_.erase(entry);
    }
}

const std::vector<KtDbObjectId>* NameIndex::find(std::wstring_view name) const {
    const auto entry = ids_.find(folded(name));
    return entry == ids_.end() ? nullptr : &entry->second;
}

KtDbObjectId NameIndex::living(std::wstring_view name) const {
    if (const std::vector<KtDbObjectId>* ids = find(name)) {
        const auto id = std::find_if(ids->begin(), ids->end(), [](KtDbObjectId i) { return !i.isErased(); });
        return id == ids->end() ? KtDbObjectId() : *id;
    }
    return {};
}

KtDbObjectId NameIndex::erased(std::wstring_view name) const {
    if (const std::vector<KtDbObjectId>* ids = find(name)) {
        const auto id = std::find_if(ids->rbegin(), ids->rend(), [](KtDbObjectId i) { return i.isErased(); });
        return id == ids->rend() ? KtDbObjectId() : *id;
    }
    return {};
}

} // namespace kthost
