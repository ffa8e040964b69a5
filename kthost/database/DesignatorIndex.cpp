#include "kthost/database/DesignatorIndex.h"

#include "kthost/database/DatabaseContents.h"
#include "kthost/database/DatabaseQueries.h"

#include <algorithm>

namespace kthost {

namespace {

constexpr std::wstring_view kDesignatorTag = L"Reference";
constexpr std::size_t kSlack = 1024; // additions that no drawing is too small for

bool holds(KtDbObjectId id, std::wstring_view designator) {
    const auto* attribute = peek<Attribute>(id);
    return attribute != nullptr && !id.isEffectivelyErased() && attribute->text() == designator;
}

} // namespace

void DesignatorIndex::note(KtDbObjectId attribute, std::wstring_view tag, std::wstring_view text) {
    if (!built_ || tag != kDesignatorTag) {
        return;
    }
    attributes_.emplace(text, attribute);
    built_ = attributes_.size() <= 2 * builtSize_ + kSlack;
    if (!built_) {
        attributes_.clear();
    }
}

void DesignatorIndex::build(const Database& database) {
    const ObjectStore& store = ObjectStore::instance();
    const std::uint32_t slot = database.contents().slot;
    for (std::uint64_t handle = 1; handle <= store.lastHandle(slot); ++handle) {
        const KtDbObjectId id = store.byHandle(slot, handle);
        const auto* attribute = peek<Attribute>(id);
        if (attribute != nullptr && attribute->tag() == kDesignatorTag) {
            attributes_.emplace(attribute->text(), id);
        }
    }
    builtSize_ = attributes_.size();
    built_ = true;
}

std::vector<KtDbObjectId> DesignatorIndex::find(const Database& database, std::wstring_view designator) {
    if (!built_) {
        build(database);
    }
    std::vector<KtDbObjectId> references;
    const auto [first, last] = attributes_.equal_range(std::wstring(designator));
    for (auto entry = first; entry != last; ++entry) {
        if (holds(entry->second, designator)) {
            references.push_back(ownerOf(entry->second));
        }
    }
    std::sort(references.begin(), references.end());
    references.erase(std::unique(references.begin(), references.end()), references.end());
    return references;
}

} // namespace kthost
