#pragma once

#include <KtDbSymbolTable.h>

#include <vector>

namespace kthost {

/// Walks by place, so records may be added and erased meanwhile.
class BlockTableIterator final : public KtDbSymbolTableIterator {
public:
    BlockTableIterator(KtDbObjectId table, const std::vector<KtDbObjectId>& records)
        : table_(table),
          records_(&records) {}

    void start(bool atBeginning, bool skipErased) override;
    /// The same, for the host itself.
    void startAt(bool atBeginning, bool skipErased);
    bool done() const override;
    Orbx::ErrorStatus getRecordId(KtDbObjectId& id) const override;
    void step(bool forward, bool skipErased) override;

private:
    void settle(bool forward, bool skipErased);

    KtDbObjectId table_;
    const std::vector<KtDbObjectId>* records_; // the table's own
    std::size_t place_ = 0;                    // anything beyond the end when done
};

} // namespace kthost
