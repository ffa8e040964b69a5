#pragma once

#include "bench/contenders/Contender.h"
#include "bench/limit/Application.h"

#include <vector>

namespace bench {

class LimitContender final : public Contender {
public:
    explicit LimitContender(kthost::Document& document) : document_(document), application_(document) {}

    void prepare() override { application_.calls().prepare(*document_.database()); }

    void expect(const Expected& expected) override;
    bool attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) override;
    bool update(bool force, bool notify) override;
    bool attachTimer(KtRxCallback callback) override;

    /// Marks and what follows from them are books, which nobody keeps here.
    void markChanged(const Ids& /*definitions*/) override {}

    void propagate() override {}

    void forgetChanges() override {}

    /// Always of every definition of the drawing; the sum is not worked out.
    std::uint64_t countInstances(const Ids& definitions, bool modelSpaceOnly) override;
    bool appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) override;

private:
    kthost::Document& document_;
    limit::Application application_;
    std::vector<KtRxCallback> timerCallbacks_;
};

} // namespace bench
