#include "kthost/window/SystemQueue.h"

#include "kthost/window/HostClock.h"
#include "kthost/window/MessageLoop.h"

#include <algorithm>
#include <iterator>

namespace kthost {

namespace {

HWND openWindow = nullptr;

std::deque<MSG>& posted() {
    static std::deque<MSG> messages;
    return messages;
}

} // namespace

HWND createHiddenWindow(const CWnd& owner) {
    // Handles are only compared, never followed; the owner's address is one that nothing else has.
    openWindow =
        reinterpret_cast<HWND>(const_cast<CWnd*>(&owner)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    return openWindow;
}

void destroyHiddenWindow(HWND /*window*/) {
    openWindow = nullptr;
    posted().clear();
}

void takePostedMessages(std::deque<MSG>& queue) {
    std::ranges::move(posted(), std::back_inserter(queue));
    posted().clear();
}

void deliverToWindow(const MSG& /*message*/) {}

} // namespace kthost

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window == nullptr || window != kthost::openWindow) {
        return 0;
    }
    kthost::tracePosting(message, wParam, lParam);
    kthost::posted().push_back({window, message, wParam, lParam, GetTickCount(), {0, 0}});
    return 1;
}
