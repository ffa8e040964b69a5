#pragma once

#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbDatabase.h>

#include "blocks/OpenedObject.h"

#include <memory>
#include <tuple>

// The names of the two templates are those that the host's own table iterators have.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)

/// Walk over a host table: keeps the table open for reading, and a host iterator on it, for as long as it
/// lives.
template <typename Table, typename TableIterator, typename Record>
class _KtDbBaseIter {
public:
    explicit _KtDbBaseIter(KtDbObjectId tableId) : table_(tableId, KtDb::kForRead), status_(table_.status()) {
        TableIterator* iterator = nullptr;
        if (table_) {
            status_ = table_->newIterator(iterator);
        }
        iterator_.reset(iterator);
    }

    /// Why there is nothing to walk; eOk when table and iterator could be had.
    Orbx::ErrorStatus status() const { return status_; }

    bool done() const { return iterator_ == nullptr || iterator_->done(); }

    /// Null when the host cannot tell, and behind the last.
    KtDbObjectId recordId() const {
        KtDbObjectId id;
        if (iterator_ != nullptr && iterator_->getRecordId(id) != Orbx::eOk) {
            id = KtDbObjectId();
        }
        return id;
    }

    /// The current record, opened for reading unless it is erased.
    OpenedObject<Record> open() const { return OpenedObject<Record>(recordId(), KtDb::kForRead); }

protected:
    TableIterator* iterator() const { return iterator_.get(); }

private:
    OpenedObject<Table> table_;
    std::unique_ptr<TableIterator> iterator_; // goes before the table that it walks
    Orbx::ErrorStatus status_;
};

/// Walk over a symbol table from its start, erased records skipped.
template <typename Table, typename TableIterator, typename Record>
class _KtDbSymbolTableIter : public _KtDbBaseIter<Table, TableIterator, Record> {
public:
    explicit _KtDbSymbolTableIter(KtDbObjectId tableId)
        : _KtDbBaseIter<Table, TableIterator, Record>(tableId) {
        if (this->iterator() != nullptr) {
            this->iterator()->start(true, true);
        }
    }

    void step() { this->iterator()->step(true, true); }
};

// NOLINTEND(clang-diagnostic-reserved-identifier)

/// Walk over the block table of a drawing.
class KtDbBlockTableIter
    : public _KtDbSymbolTableIter<KtDbBlockTable, KtDbBlockTableIterator, KtDbBlockTableRecord> {
public:
    explicit KtDbBlockTableIter(const KtDbDatabase& database)
        : _KtDbSymbolTableIter(database.blockTableId()) {}
};
