#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/NameIndex.h"

#include <KtDbBlockTable.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kthost {

class BlockTable final : public DatabaseObject<KtDbBlockTable> {
public:
    Orbx::ErrorStatus getIdAt(const wchar_t* name, KtDbObjectId& id, bool openErased) const override;
    Orbx::ErrorStatus newIterator(KtDbBlockTableIterator*& iterator, bool atBeginning,
                                  bool skipErased) const override;

    /// The living record of that name; null when there is none.
    KtDbObjectId living(std::wstring_view name) const { return contents_->names.living(name); }

    /// In the order in which they were added, released ones included until they are dropped.
    std::vector<KtDbObjectId>& records() { return contents_->records; }

    const std::vector<KtDbObjectId>& records() const { return contents_->records; }

    void add(KtDbObjectId record, std::wstring_view name);
    void rename(KtDbObjectId record, std::wstring_view from, std::wstring_view to);

    void forgetName(KtDbObjectId record, std::wstring_view name) { contents_->names.remove(name, record); }

    /// "*", the letter and the next number that no record has or had.
    std::wstring nextAnonymousName(wchar_t letter);

private:
    struct Contents {
        NameIndex names;
        std::vector<KtDbObjectId> records;
        std::map<wchar_t, std::uint32_t> lastNumbers;
    };

    std::unique_ptr<Contents> contents_ = std::make_unique<Contents>(); // too large to lie among the objects
};

} // namespace kthost
