#include "kthost/window/WindowCalls.h"

#include "kthost/audit/Trace.h"
#include "kthost/window/HostClock.h"
#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"
#include "kthost/window/windows/ImportTable.h"

#include <array>
#include <cstddef>

namespace kthost {

namespace {

DWORD WINAPI answerTickCount() {
    const HostClock* clock = HostClock::current();
    return clock == nullptr ? ::GetTickCount() : clock->now();
}

BOOL WINAPI answerInputState() {
    const MainWindow* window = MainWindow::current();
    return window != nullptr && window->isInputWaiting() ? TRUE : ::GetInputState();
}

BOOL WINAPI answerPostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const BOOL posted = ::PostMessageW(window, message, wParam, lParam);
    if (posted != 0) {
        tracePosting(message, wParam, lParam);
    }
    return posted;
}

struct Answer {
    const char* name;
    const void* system;
    const void* host;
    bool byHost = false;
};

/// In the order of WindowCall. This library's own imports stay as they are, so what it calls is the system's.
std::array<Answer, 3>& answers() {
    static std::array<Answer, 3> all{{
        {"GetTickCount", reinterpret_cast<const void*>(&::GetTickCount),
         reinterpret_cast<const void*>(&answerTickCount)},
        {"GetInputState", reinterpret_cast<const void*>(&::GetInputState),
         reinterpret_cast<const void*>(&answerInputState)},
        {"PostMessageW", reinterpret_cast<const void*>(&::PostMessageW),
         reinterpret_cast<const void*>(&answerPostMessage)},
    }};
    return all;
}

} // namespace

void setAnswered(WindowCall call, bool byHost) {
    Answer& answer = answers().at(static_cast<std::size_t>(call));
    if (answer.byHost == byHost) {
        return;
    }
    answer.byHost = byHost;
    for (const HMODULE image : imagesLinkedAgainstHost()) {
        redirectImport(image, answer.name, byHost ? answer.host : answer.system);
    }
}

void answerInNewLibraries() {
    for (const Answer& answer : answers()) {
        if (!answer.byHost) {
            continue;
        }
        for (const HMODULE image : imagesLinkedAgainstHost()) {
            redirectImport(image, answer.name, answer.host);
        }
    }
}

} // namespace kthost
