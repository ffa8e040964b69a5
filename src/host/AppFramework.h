#pragma once

#include <WindowSystem.h>

/// The part of the application framework that the host's user interface stands on.

class CWnd {
public:
    HWND m_hWnd = nullptr;
};

class CWinThread {
public:
    CWnd* m_pMainWnd = nullptr; ///< not owned; null while the program has no main window
};

/// The calling thread's object; null for a thread that the framework did not start.
CWinThread* AfxGetThread();
/// Shows a message and waits for the answer. `type` 0x10 is the stop icon with an OK button.
int AfxMessageBox(const wchar_t* text, UINT type, UINT helpId);
