#pragma once

/// The part of the window system that the module uses. On Windows it is the system's own; elsewhere the host
/// brings a message queue and a tick counter of the same names. All of it belongs to the user-interface
/// thread.

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#else

#include <cstdint>

using UINT = std::uint32_t;
using DWORD = std::uint32_t;
using BOOL = std::int32_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;

struct HWND__; // NOLINT(clang-diagnostic-reserved-identifier): the window system's own name
using HWND = HWND__*;
struct HINSTANCE__; // NOLINT(clang-diagnostic-reserved-identifier): the window system's own name
using HMODULE = HINSTANCE__*;

struct POINT {
    std::int32_t x;
    std::int32_t y;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};

/// Handle of a module that is loaded under that file name; null when there is none.
HMODULE GetModuleHandleW(const wchar_t* name);
/// The same id for the same name, for the life of the process; never 0 for a non-empty name.
UINT RegisterWindowMessageW(const wchar_t* name);
/// Queues a message and returns at once; 0 when there is no such window.
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Milliseconds; wraps around after about 49.7 days.
DWORD GetTickCount();
/// Nonzero when mouse or keyboard input waits in the calling thread's queue.
BOOL GetInputState();

#endif
