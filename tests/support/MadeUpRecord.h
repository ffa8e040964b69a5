#pragma once

#include <KtArray.h>
#include <KtDbBlockTableRecord.h>
#include <KtDbXData.h>

/// A block table record that no drawing holds, with an id and a name as a test wants them: what a host could
/// hand out and the reference host does not.
class MadeUpRecord : public KtDbBlockTableRecord {
public:
    explicit MadeUpRecord(KtDbObjectId id) : id_(id) {}

    /// Anonymous. The name, which may be null, stays the caller's.
    explicit MadeUpRecord(const wchar_t* name) : name_(name) {}

    KtDbObjectId objectId() const override { return id_; }

    KtDbObjectId ownerId() const override { return {}; }

    KtDbDatabase* database() const override { return nullptr; }

    std::uint64_t handle() const override { return 0; }

    bool isErased() const override { return false; }

    Orbx::ErrorStatus close() override { return Orbx::eOk; }

    Orbx::ErrorStatus erase(bool /*erasing*/) override { return Orbx::eOk; }

    Orbx::ErrorStatus addReactor(KtDbObjectReactor* /*reactor*/) const override { return Orbx::eOk; }

    Orbx::ErrorStatus removeReactor(KtDbObjectReactor* /*reactor*/) const override { return Orbx::eOk; }

    Orbx::ErrorStatus getXData(const wchar_t* /*application*/,
                               KtArray<KtDbXDataItem>& /*items*/) const override {
        return Orbx::eKeyNotFound;
    }

    Orbx::ErrorStatus getName(const wchar_t*& name) const override {
        name = name_;
        return Orbx::eOk;
    }

    bool isDependent() const override { return false; }

    bool isLayout() const override { return false; }

    bool isAnonymous() const override { return true; }

    bool isFromExternalReference() const override { return false; }

    KtDbDatabase* externalDatabase(bool /*load*/) override { return nullptr; }

    Orbx::ErrorStatus getBlockReferenceIds(KtArray<KtDbObjectId>& /*ids*/, bool /*directOnly*/,
                                           bool /*forceValidity*/) const override {
        return Orbx::eOk;
    }

    Orbx::ErrorStatus getErasedBlockReferenceIds(KtArray<KtDbObjectId>& /*ids*/) const override {
        return Orbx::eOk;
    }

    KtDbObjectIterator* entityIterator() const override { return nullptr; }

private:
    KtDbObjectId id_;
    const wchar_t* name_ = nullptr;
};
