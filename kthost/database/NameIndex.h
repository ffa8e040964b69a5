#pragma once

#include <KtDbObjectId.h>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kthost {

/// Ids by name, without regard to the case of ASCII letters. A name may belong to one living object and to
/// any number of erased ones.
class NameIndex {
public:
    void add(std::wstring_view name, KtDbObjectId id);
    void remove(std::wstring_view name, KtDbObjectId id);

    /// The living object of that name; null when there is none.
    KtDbObjectId living(std::wstring_view name) const;
    /// The erased object of that name that was made last; null when there is none.
    KtDbObjectId erased(std::wstring_view name) const;

private:
    const std::vector<KtDbObjectId>* find(std::wstring_view name) const;

    std::unordered_map<std::wstring, std::vector<KtDbObjectId>> ids_;
};

} // namespace kthost
