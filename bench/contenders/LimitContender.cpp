#include "bench/contenders/LimitContender.h"

#include <algorithm>
#include <functional>

namespace bench {

void LimitContender::expect(const Expected& expected) {
    application_.calls().expect(expected.lastKnown, limit::prepareGone(expected.gone));
}

bool LimitContender::attach(const KtArray<KtDbObjectId>& /*definitions*/, KtRxCallback callback) {
    application_.attach(callback);
    return true;
}

bool LimitContender::update(bool /*force*/, bool notify) {
    application_.update(notify);
    return true;
}

bool LimitContender::attachTimer(KtRxCallback callback) {
    timerCallbacks_.push_back(callback);
    std::sort(timerCallbacks_.begin(), timerCallbacks_.end(), std::less<>());
    application_.setTimerCallbacks(timerCallbacks_);
    return true;
}

std::uint64_t LimitContender::countInstances(const Ids& /*definitions*/, bool modelSpaceOnly) {
    application_.calls().countInstances(modelSpaceOnly);
    return 0;
}

bool LimitContender::appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) {
    application_.askForTables(records, tables);
    return true;
}

} // namespace bench
