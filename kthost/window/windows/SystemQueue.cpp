#include "kthost/window/SystemQueue.h"

#include <system_error>

namespace kthost {

namespace {

constexpr const wchar_t* kClassName = L"KtHostMainWindow";

HINSTANCE program() {
    return GetModuleHandleW(nullptr);
}

/// The class stays registered for the life of the process; registering it again fails, which does not matter.
void registerClass() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = program();
    description.lpszClassName = kClassName;
    RegisterClassExW(&description);
}

} // namespace

HWND createHiddenWindow(const CWnd& /*owner*/) {
    registerClass();
    // A message-only window: it exists where there is no desktop to show one on, and it hears no broadcasts,
    // which would come when they like.
    return CreateWindowExW(0, kClassName, L"kthost", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, program(),
                           nullptr);
}

void destroyHiddenWindow(HWND window) {
    DestroyWindow(window);
}

void takePostedMessages(std::deque<MSG>& queue) {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        queue.push_back(message);
    }
}

void deliverToWindow(const MSG& message) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

} // namespace kthost
