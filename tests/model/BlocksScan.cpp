#include "tests/model/BlocksModel.h"
#include "tests/model/Opened.h"
#include "tests/model/Statuses.h"

#include <KtDbBlockReference.h>
#include <KtDbBlockRepresentation.h>
#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>
#include <KtRxClass.h>

#include <memory>

namespace ktmodel {

namespace {

/// In table order, erased ones left out; nothing when the table cannot be read.
std::optional<Ids> recordsOf(const KtDbDatabase& database) {
    const Opened<KtDbBlockTable> table(database.blockTableId(), KtDb::kForRead);
    KtDbBlockTableIterator* made = nullptr;
    if (!table || table->newIterator(made, true, true) != Orbx::eOk) {
        return std::nullopt;
    }
    Ids records;
    const std::unique_ptr<KtDbBlockTableIterator> iterator(made);
    for (; !iterator->done(); iterator->step()) {
        KtDbObjectId id;
        if (iterator->getRecordId(id) == Orbx::eOk) {
            records.push_back(id);
        }
    }
    return records;
}

const KtDbBlockRepresentation* representationOf(const KtDbBlockReference& reference) {
    const KtRxObject* extension = reference.queryX(KtDbBlockRepresentation::desc());
    const bool fits = extension != nullptr && extension->isKindOf(KtDbBlockRepresentation::desc());
    return fits ? static_cast<const KtDbBlockRepresentation*>(extension) : nullptr;
}

/// The dynamic definition that the first reference that can tell says it represents; null when none can.
KtDbObjectId originalOf(const KtDbBlockTableRecord& record) {
    KtArray<KtDbObjectId> references;
    if (record.getBlockReferenceIds(references, true, true) != Orbx::eOk) {
        return {};
    }
    for (const KtDbObjectId id : references) {
        const Opened<KtDbBlockReference> reference(id, KtDb::kForNotify, true);
        if (!reference) {
            continue;
        }
        if (const KtDbBlockRepresentation* extension = representationOf(*reference)) {
            return extension->originalBlockTableRecord(&*reference);
        }
    }
    return {};
}

KtDbObjectId keyOf(const KtDbBlockTableRecord& record) {
    const KtDbObjectId original = record.isAnonymous() ? originalOf(record) : KtDbObjectId();
    return original.isNull() ? record.objectId() : original;
}

} // namespace

/// A table that cannot be read still has to be looked at.
void BlocksModel::scan() {
    layouts_.clear();
    monitoredCount_ = 0;
    if (const std::optional<Ids> records = recordsOf(database_)) {
        for (const KtDbObjectId id : *records) {
            scanRecord(id);
        }
        setRescanNeeded(false);
    }
}

void BlocksModel::scanRecord(KtDbObjectId id) {
    const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
    if (!record) {
        return;
    }
    if (record->isLayout()) {
        layouts_.push_back(id);
    }
    if (const auto known = definitions_.find(keyOf(*record)); known != definitions_.end()) {
        static_cast<void>(known->second->update(id)); // it is known, whatever it could not look at
        ++monitoredCount_;
    } else if (create(*record)) {
        ++monitoredCount_;
    }
}

/// A record that nobody knows gets a model under its own id, whichever definition it represents.
bool BlocksModel::create(const KtDbBlockTableRecord& record) {
    if (definitions_.contains(record.objectId())) {
        return false;
    }
    beingMade_ = std::make_shared<DefinitionModel>();
    const bool done = beingMade_->init(*this, record) == kDone;
    if (done) {
        definitions_[record.objectId()] = beingMade_;
    } else {
        drop(*beingMade_);
    }
    beingMade_.reset();
    return done;
}

/// Of a definition that could not be made nothing stays, its representations included.
void BlocksModel::drop(const DefinitionModel& definition) {
    std::erase_if(definitions_, [&](const auto& entry) { return entry.second.get() == &definition; });
}

void BlocksModel::addRepresentation(KtDbObjectId record, DefinitionModel& definition) {
    const bool isBeingMade = beingMade_ != nullptr && beingMade_.get() == &definition;
    definitions_.try_emplace(record, isBeingMade ? beingMade_ : definitions_.at(definition.id()));
}

/// The first record that stands for the drawing that the id is of.
KtDbObjectId BlocksModel::findXrefBlock(KtDbObjectId id) const {
    if (id.database() == &database_) {
        return {};
    }
    for (const KtDbObjectId record : recordsOf(database_).value_or(Ids())) {
        const Opened<KtDbBlockTableRecord> opened(record, KtDb::kForRead);
        if (opened && opened->isFromExternalReference() && opened->externalDatabase(false) == id.database()) {
            return record;
        }
    }
    return {};
}

} // namespace ktmodel
