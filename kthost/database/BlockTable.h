#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/NameIndex.h"

#include <KtDbBlockTable.h>

#include <map>
#include <string>
#include <vector>

namespace kthost {

class BlockTable final : public DatabaseObject<KtDbBlockTable> {
public:
    Orbx::ErrorStatus getIdAt(const wchar_t* name, KtDbObjectId& id, bool openErased) const override;
    Orbx::ErrorStatus newIterator(KtDbBlockTableIterator*& iterator, bool atBeginning,
                                  bool skipErased) const override;

    /// The living record of that name; null when there is none.
    KtDbObjectId living(std::wstring_view name) const { return names_.living(name); }

    /// In the order in which they were added, released ones included until they are dropped.
    const std::vector<KtDbObjectId>& records() const { return records_; }

    void add(KtDbObjectId record, std::wstring_view name);
    void rename(KtDbObjectId record, std::wstring_view from, std::wstring_view to);

    void forgetName(KtDbObjectId record, std::wstring_view name) { names_.remove(name, record); }

    void dropReleased();
    /// "*", the letter and the next number that no record has or had.
    std::wstring nextAnonymousName(wchar_t letter);

private:
    NameIndex names_;
    std::vector<KtDbObjectId> records_;
    std::map<wchar_t, std::uint32_t> lastNumbers_;
};

} // namespace kthost
