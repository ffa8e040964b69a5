#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/ObjectState.h"
#include "kthost/database/ReferenceList.h"

#include <KtDbBlockTableRecord.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace kthost {

/// How many living references tie one record to each of some others.
using Nestings = std::unordered_map<KtDbObjectId, std::uint32_t>;

class BlockTableRecord final : public DatabaseObject<KtDbBlockTableRecord> {
public:
    BlockTableRecord(std::wstring_view name, bool layout) : layout_(layout) { state_.name = name; }

    /// A record that stands for an attached drawing, or a dependent one that mirrors a record of it.
    explicit BlockTableRecord(RecordState state) : state_(std::move(state)) {}

    Orbx::ErrorStatus getName(const wchar_t*& name) const override;

    bool isDependent() const override { return state_.dependent; }

    bool isLayout() const override { return layout_; }

    bool isAnonymous() const override { return !layout_ && state_.name.starts_with(L'*'); }

    bool isFromExternalReference() const override;
    KtDbDatabase* externalDatabase(bool load) override;
    Orbx::ErrorStatus getBlockReferenceIds(KtArray<KtDbObjectId>& ids, bool directOnly,
                                           bool forceValidity) const override;
    Orbx::ErrorStatus getErasedBlockReferenceIds(KtArray<KtDbObjectId>& ids) const override;
    KtDbObjectIterator* entityIterator() const override;

    const RecordState& fields() const { return state_; }

    /// Has to be open for write.
    Orbx::ErrorStatus setFields(RecordState fields);

    ObjectState state() const { return state_; }

    void exchangeState(ObjectState& state);

    /// What lies here, in drawing order, erased ones included; released ones too until they are dropped.
    std::vector<KtDbObjectId>& entities() { return entities_; }

    const std::vector<KtDbObjectId>& entities() const { return entities_; }

    /// The references to this record; for a dependent one, those in the attached drawing to what it mirrors.
    const ReferenceList& references() const;

    ReferenceList& ownReferences() { return references_; }

    /// Records that living references here place, and records in which living references place this one.
    Nestings& contains() { return contains_; }

    const Nestings& contains() const { return contains_; }

    Nestings& placedIn() { return placedIn_; }

    const Nestings& placedIn() const { return placedIn_; }

    /// Records that represent this one or did; which do now, they themselves say.
    std::vector<KtDbObjectId>& representations() { return representations_; }

    const std::vector<KtDbObjectId>& representations() const { return representations_; }

    KtDbObjectId graph() const { return graph_; }

    void setGraph(KtDbObjectId graph) { graph_ = graph; }

private:
    const BlockTableRecord* mirrored() const;

    RecordState state_;
    const bool layout_ = false;
    KtDbObjectId graph_;
    std::vector<KtDbObjectId> entities_;
    ReferenceList references_;
    Nestings contains_;
    Nestings placedIn_;
    std::vector<KtDbObjectId> representations_;
};

} // namespace kthost
