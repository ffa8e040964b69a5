#include "bench/limit/Calls.h"

#include "bench/BlockTableWalk.h"
#include "bench/ModelSpace.h"
#include "bench/Opened.h"
#include "bench/drawings/Require.h"
#include "kthost/database/DatabaseQueries.h"

#include <KtApDocument.h>
#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbEvalGraph.h>

#include <memory>
#include <tuple>
#include <utility>

namespace bench::limit {

void Calls::prepare(const kthost::Database& database) {
    records_ = prepareRecords(database);
    layouts_ = kthost::records(database, true);
    watchers_.clear();
    for (std::size_t i = 0; i < records_.size(); ++i) {
        watchers_.emplace_back(marks_);
    }
}

void Calls::expect(KtDbObjectId lastKnown, std::vector<Gone> gone) {
    lastKnown_ = lastKnown;
    gone_ = std::move(gone);
}

void Calls::create() {
    const Opened<KtDbBlockTable> table(document_.database()->blockTableId(), KtDb::kForRead);
    require(table->getIdAt(L"*Model_Space", modelSpace_));
    scan(true);
}

bool Calls::update() {
    scan(false);
    return std::exchange(marks_.changed, false);
}

void Calls::scan(bool first) {
    auto watcher = watchers_.begin();
    nextGone_ = 0;
    walkBlockTable(*document_.database(), [&](const KtDbBlockTableRecord& record) {
        require(watcher != watchers_.end(), "no more records than were prepared");
        scanRecord(record, *watcher++, first);
        return true;
    });
    marks_.rescanNeeded = false;
}

void Calls::scanRecord(const KtDbBlockTableRecord& record, Watcher& watcher, bool first) {
    if (record.isLayout()) {
        std::ignore = record.objectId(); // to be noted
    }
    require(!record.isAnonymous(), "no definition is anonymous");
    const KtDbObjectId id = record.objectId();
    if (first) {
        KtDbEvalGraph* graph = nullptr;
        require(KtDbEvalGraph::getGraph(graph, &record, L"ORBX_ENHANCEDBLOCK", KtDb::kForRead) ==
                    Orbx::eKeyNotFound,
                "no definition is dynamic");
    }
    refresh(id, watcher);
}

void Calls::refresh(KtDbObjectId id, Watcher& watcher) {
    if (id.isErased()) {
        return;
    }
    ids_.setLogicalLengthZero();
    {
        const Opened<KtDbBlockTableRecord> record(id, KtDb::kForRead);
        require(record->getBlockReferenceIds(ids_, true, true));
        require(record->getErasedBlockReferenceIds(ids_));
    }
    for (const KtDbObjectId reference : ids_) {
        visit(reference, watcher);
    }
    letGoOfGone(id);
}

void Calls::visit(KtDbObjectId reference, Watcher& watcher) {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForRead, true);
    const KtDbObjectId container = opened->ownerId();
    if (isModelSpace(container)) {
        require(container.database() == document_.database(), "no container is another drawing's");
    }
    if (container.isNull() || !container.isValid()) {
        return;
    }
    if (enabled_ && reference > lastKnown_) {
        marks_.changed = true;
        attachReference(reference, watcher);
    }
}

void Calls::letGoOfGone(KtDbObjectId record) {
    for (; nextGone_ < gone_.size() && gone_[nextGone_].definition == record; ++nextGone_) {
        marks_.changed = true;
        const Opened<KtDbBlockReference> opened(gone_[nextGone_].reference, KtDb::kForNotify, true);
        require(!opened, "what is gone does not open");
    }
}

void Calls::enable() {
    scan(false);
    marks_.changed = false;
    const Opened<KtDbBlockTable> table(document_.database()->blockTableId(), KtDb::kForNotify);
    std::ignore = table->addReactor(&tableWatcher_); // as the module does not look at it either
    auto watcher = watchers_.begin();
    for (const PreparedRecord& prepared : records_) {
        for (const KtDbObjectId reference : prepared.references) {
            attachReference(reference, *watcher);
        }
        if (prepared.id.isValid() && !prepared.id.isErased() && !prepared.id.isEffectivelyErased()) {
            const Opened<KtDbBlockTableRecord> record(prepared.id, KtDb::kForNotify);
            std::ignore = record->addReactor(&*watcher); // nor here
        }
        ++watcher;
    }
    enabled_ = true;
}

void Calls::attachReference(KtDbObjectId reference, Watcher& watcher) const {
    const Opened<KtDbBlockReference> opened(reference, KtDb::kForNotify, true);
    std::ignore = opened->addReactor(&watcher); // nor here
    const std::unique_ptr<KtDbObjectIterator> attributes(opened->attributeIterator());
    if (attributes == nullptr) {
        return;
    }
    for (; !attributes->done(); attributes->step()) {
        attachAttribute(attributes->objectId(), watcher);
    }
}

void Calls::attachAttribute(KtDbObjectId attribute, Watcher& watcher) const {
    if (attribute.isNull() || !attribute.isValid() || attribute.isErased() ||
        attribute.isEffectivelyErased()) {
        return;
    }
    const Opened<KtDbAttribute> opened(attribute, KtDb::kForNotify, true);
    std::ignore = opened->addReactor(&watcher); // nor here
}

void Calls::countInstances(bool modelSpaceOnly) const {
    for (const PreparedRecord& record : records_) {
        if (record.isLayout) {
            continue;
        }
        if (modelSpaceOnly) {
            countInContainer(record, modelSpace_);
            continue;
        }
        for (const KtDbObjectId layout : layouts_) {
            countInContainer(record, layout);
        }
    }
}

/// Which container it is about, the host is not told.
void Calls::countInContainer(const PreparedRecord& record, KtDbObjectId /*container*/) const {
    for (const KtDbObjectId holder : record.containers) {
        if (isModelSpace(holder)) {
            require(holder.database() == document_.database(), "no container is another drawing's");
        }
        require(!holder.isNull() && holder.isValid() && !holder.isErased() && !holder.isEffectivelyErased(),
                "every container is there");
    }
}

} // namespace bench::limit
