#include "DocumentTimer.h"

#include "Refusal.h"

#include <ktdx/KtDxNotify.h>

#include <algorithm>

namespace parts {

void DocumentTimer::attach(KtRxCallback callback, std::uint32_t milliseconds) {
    wishes_.push_back({callback, milliseconds});
    if (ktdxDocTimerAttach(document_, callback, shortest(), 1) == 0) {
        wishes_.pop_back();
        throw Refusal(L"the document cannot be watched; is KtDxNotify loaded?");
    }
}

void DocumentTimer::detach(KtRxCallback callback) {
    std::erase_if(wishes_, [callback](const Wish& wish) { return wish.callback == callback; });
    // Fails only when the module has gone, and with it everything that was attached.
    static_cast<void>(ktdxDocTimerAttach(document_, callback, shortest(), 0));
}

std::uint32_t DocumentTimer::shortest() const {
    const auto least = std::min_element(wishes_.begin(), wishes_.end(), [](const Wish& a, const Wish& b) {
        return a.milliseconds < b.milliseconds;
    });
    return least == wishes_.end() ? 0 : least->milliseconds;
}

} // namespace parts
