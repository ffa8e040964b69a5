#ifndef _WIN32

#include <WindowSystem.h>

#include "kthost/reader/Utf8.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/window/HostClock.h"
#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"

HMODULE GetModuleHandleW(const wchar_t* name) {
    const kthost::ModuleLoader* modules = kthost::ModuleLoader::current();
    if (modules == nullptr || name == nullptr) {
        return nullptr;
    }
    const kthost::LoadedModule* module = modules->find(kthost::toUtf8(name));
    return module == nullptr ? nullptr : module->handle();
}

BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    kthost::MessageLoop* loop = kthost::MessageLoop::current();
    const kthost::MainWindow* mainWindow = kthost::MainWindow::current();
    if (loop == nullptr || mainWindow == nullptr || !mainWindow->isPresent() ||
        window != mainWindow->handle()) {
        return 0;
    }
    loop->post({window, message, wParam, lParam, GetTickCount(), {0, 0}});
    return 1;
}

DWORD GetTickCount() {
    const kthost::HostClock* clock = kthost::HostClock::current();
    return clock == nullptr ? kthost::HostClock::machineTicks() : clock->now();
}

BOOL GetInputState() {
    const kthost::MainWindow* window = kthost::MainWindow::current();
    return window != nullptr && window->isInputWaiting() ? 1 : 0;
}

#endif
