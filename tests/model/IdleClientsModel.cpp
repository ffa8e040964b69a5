#include "tests/model/IdleClientsModel.h"

namespace ktmodel {

void IdleClientsModel::add(CallbackNumber callback) {
    callbacks_.insert(callback);
    if (!enabled_) {
        setEnabled(true);
    }
}

void IdleClientsModel::remove(CallbackNumber callback) {
    callbacks_.erase(callback);
    if (enabled_ && callbacks_.empty()) {
        setEnabled(false);
    }
}

void IdleClientsModel::setEnabled(bool enable) {
    timer_.setEnabled(enable);
    enabled_ = enable;
}

std::optional<CallbackNumber> IdleClientsModel::behind(std::optional<CallbackNumber> last) const {
    const auto next = last ? callbacks_.upper_bound(*last) : callbacks_.begin();
    return next == callbacks_.end() ? std::nullopt : std::optional(*next);
}

} // namespace ktmodel
