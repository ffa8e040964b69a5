#include "tests/support/ClientCallbacks.h"

#include "notify/ByAddress.h"

#include <algorithm>

ClientCallbacks* ClientCallbacks::current = nullptr;

template <std::size_t kNumber>
void ClientCallbacks::function() {
    current->called(&function<kNumber>);
}

ClientCallbacks::ClientCallbacks()
    : functions_{&function<0>, &function<1>, &function<2>, &function<3>, &function<4>} {
    std::ranges::sort(functions_, ByAddress{});
    current = this;
}

ClientCallbacks::~ClientCallbacks() {
    current = nullptr;
}

void ClientCallbacks::called(KtRxCallback which) {
    const auto rank = static_cast<std::size_t>(std::ranges::find(functions_, which) - functions_.begin());
    calls_.push_back(rank);
    if (const std::function<void()> action = actions_[rank]) {
        action();
    }
}
