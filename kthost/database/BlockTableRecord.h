#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/ObjectState.h"
#include "kthost/database/ReferenceList.h"

#include <KtDbBlockTableRecord.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace kthost {

/// How many living references tie one record to each of some others.
using Nestings = std::unordered_map<KtDbObjectId, std::uint32_t>;

class BlockTableRecord final : public DatabaseObject<KtDbBlockTableRecord> {
public:
    BlockTableRecord(RecordState state, bool layout) : layout_(layout) {
        contents_->state = std::move(state);
    }

    BlockTableRecord(std::wstring_view name, bool layout) : layout_(layout) { contents_->state.name = name; }

    Orbx::ErrorStatus getName(const wchar_t*& name) const override;

    bool isDependent() const override { return contents_->state.dependent; }

    bool isLayout() const override { return layout_; }

    bool isAnonymous() const override { return !layout_ && contents_->state.name.starts_with(L'*'); }

    bool isFromExternalReference() const override;
    KtDbDatabase* externalDatabase(bool load) override;
    Orbx::ErrorStatus getBlockReferenceIds(KtArray<KtDbObjectId>& ids, bool directOnly,
                                           bool forceValidity) const override;
    Orbx::ErrorStatus getErasedBlockReferenceIds(KtArray<KtDbObjectId>& ids) const override;
    KtDbObjectIterator* entityIterator() const override;

    const RecordState& fields() const { return contents_->state; }

    /// Has to be open for write.
    Orbx::ErrorStatus setFields(RecordState fields);

    ObjectState state() const { return contents_->state; }

    void exchangeState(ObjectState& state);

    /// What lies here, in drawing order, erased ones included; released ones too until they are dropped.
    std::vector<KtDbObjectId>& entities() { return contents_->entities; }

    const std::vector<KtDbObjectId>& entities() const { return contents_->entities; }

    /// The references to this record; for a dependent one, those in the attached drawing to what it mirrors.
    const ReferenceList& references() const;

    ReferenceList& ownReferences() { return contents_->references; }

    /// Records that living references here place, and records in which living references place this one.
    Nestings& contains() { return contents_->contains; }

    const Nestings& contains() const { return contents_->contains; }

    Nestings& placedIn() { return contents_->placedIn; }

    const Nestings& placedIn() const { return contents_->placedIn; }

    /// Records that represent this one or did; which do now, they themselves say.
    std::vector<KtDbObjectId>& representations() { return contents_->representations; }

    const std::vector<KtDbObjectId>& representations() const { return contents_->representations; }

    KtDbObjectId graph() const { return contents_->graph; }

    void setGraph(KtDbObjectId graph) { contents_->graph = graph; }

private:
    const BlockTableRecord* mirrored() const;
    KtDbDatabase* attachedDatabase() const;

    struct Contents {
        RecordState state;
        KtDbObjectId graph;
        std::vector<KtDbObjectId> entities;
        ReferenceList references;
        Nestings contains;
        Nestings placedIn;
        std::vector<KtDbObjectId> representations;
    };

    std::unique_ptr<Contents> contents_ = std::make_unique<Contents>(); // too large to lie among the objects
    const bool layout_;
};

} // namespace kthost
