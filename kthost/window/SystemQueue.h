#pragma once

#include <AppFramework.h>

#include <deque>

/// The system's part of the main window and of its message loop. User-interface thread only.
namespace kthost {

/// A window that is never shown and has no other purpose than to be posted to. `owner` stays where it is as
/// long as the window. Throws std::system_error when there can be none.
HWND createHiddenWindow(const CWnd& owner);
/// Nothing can be posted to it any more, and what has been is dropped.
void destroyHiddenWindow(HWND window);

/// Appends what has been posted since the last call, the oldest first.
void takePostedMessages(std::deque<MSG>& queue);
/// Hands a message that no filter has kept to its window.
void deliverToWindow(const MSG& message);

} // namespace kthost
