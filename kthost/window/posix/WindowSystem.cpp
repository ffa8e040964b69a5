#include <WindowSystem.h>

#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/Utf8.h"
#include "kthost/window/HostClock.h"
#include "kthost/window/MainWindow.h"

HMODULE GetModuleHandleW(const wchar_t* name) {
    const kthost::ModuleLoader* modules = kthost::ModuleLoader::current();
    if (modules == nullptr || name == nullptr) {
        return nullptr;
    }
    const kthost::LoadedModule* module = modules->find(kthost::toUtf8(name));
    return module == nullptr ? nullptr : module->handle();
}

DWORD GetTickCount() {
    const kthost::HostClock* clock = kthost::HostClock::current();
    return clock == nullptr ? kthost::HostClock::machineTicks() : clock->now();
}

BOOL GetInputState() {
    const kthost::MainWindow* window = kthost::MainWindow::current();
    return window != nullptr && window->isInputWaiting() ? 1 : 0;
}
