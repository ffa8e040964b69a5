#pragma once

#include "bench/contenders/Contender.h"
#include "bench/literal/Application.h"

namespace bench {

class LiteralContender final : public Contender {
public:
    explicit LiteralContender(kthost::Document& document) : document_(&document) {}

    bool attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) override;
    bool update(bool force, bool notify) override;
    bool attachTimer(KtRxCallback callback) override;
    void markChanged(const Ids& definitions) override;
    void propagate() override;
    void forgetChanges() override;
    std::uint64_t countInstances(const Ids& definitions, bool modelSpaceOnly) override;
    bool appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) override;

private:
    literal::Blocks& blocks() { return *application_.blocksOf(document_); }

    KtApDocument* document_;
    literal::Application application_;
};

} // namespace bench
