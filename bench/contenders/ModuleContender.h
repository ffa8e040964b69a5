#pragma once

#include "bench/contenders/Contender.h"

#include "app/KtDxApplication.h"
#include "blocks/KtDxBlocks.h"

#include <memory>

namespace bench {

/// The module's objects, linked into this program.
class ModuleContender final : public Contender {
public:
    explicit ModuleContender(kthost::Document& document);

    bool attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) override;
    bool update(bool force, bool notify) override;
    bool attachTimer(KtRxCallback callback) override;
    void markChanged(const Ids& definitions) override;
    void propagate() override;
    void forgetChanges() override;
    std::uint64_t countInstances(const Ids& definitions, bool modelSpaceOnly) override;
    bool appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) override;

private:
    KtDxBlocks& blocks() const;

    kthost::Document& document_;
    std::unique_ptr<KtDxApplication> application_;
};

} // namespace bench
