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
    const wchar_t* library;
    const char* name;
    const void* host;
    bool byHost = false;
};

/// In the order of WindowCall. This library's own imports stay as they are, so what it calls is the system's.
std::array<Answer, 3>& answers() {
    static std::array<Answer, 3> all{{
        {L"kernel32.dll", "GetTickCount", reinterpret_cast<const void*>(&answerTickCount)},
        {L"user32.dll", "GetInputState", reinterpret_cast<const void*>(&answerInputState)},
        {L"user32.dll", "PostMessageW", reinterpret_cast<const void*>(&answerPostMessage)},
    }};
    return all;
}

/// The system's own function. Its name alone may stand for a piece of this library that leads there.
const void* systemsAnswer(const Answer& answer) {
    return reinterpret_cast<const void*>(GetProcAddress(GetModuleHandleW(answer.library), answer.name));
}

} // namespace

void setAnswered(WindowCall call, bool byHost) {
    Answer& answer = answers().at(static_cast<std::size_t>(call));
    if (answer.byHost == byHost) {
        return;
    }
    answer.byHost = byHost;
    const void* address = byHost ? answer.host : systemsAnswer(answer);
    for (const HMODULE image : imagesLinkedAgainstHost()) {
        redirectImport(image, answer.name, address);
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
