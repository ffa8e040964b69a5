#pragma once

#include <AppFramework.h>

#include <string>
#include <vector>

namespace kthost {

/// What the host shows of itself to the window system: the thread, its one main window, whether input waits,
/// and the message boxes that were shown. One at a time in a process.
class MainWindow {
public:
    struct MessageBox {
        std::wstring text;
        UINT type;
        UINT helpId;
    };

    /// Throws std::system_error when the system has no window for it.
    MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow();

    static MainWindow* current();

    /// That of the last one while there is none.
    HWND handle() const { return window_.m_hWnd; }

    /// A program has no main window while it starts and ends. Messages that wait for it go with it.
    void setPresent(bool present);

    bool isPresent() const { return thread_.m_pMainWnd != nullptr; }

    /// Whether the framework knows the thread.
    void setThreadKnown(bool known) { threadKnown_ = known; }

    CWinThread* thread() { return threadKnown_ ? &thread_ : nullptr; }

    /// Whether mouse or keyboard input waits.
    void setInputWaiting(bool waiting);

    bool isInputWaiting() const { return inputWaiting_; }

    /// A headless host cannot ask: the box is kept, printed to stderr, and answered with OK.
    int showMessageBox(const wchar_t* text, UINT type, UINT helpId);

    const std::vector<MessageBox>& messageBoxes() const { return messageBoxes_; }

private:
    CWnd window_;
    CWinThread thread_;
    bool threadKnown_ = true;
    bool inputWaiting_ = false;
    std::vector<MessageBox> messageBoxes_;
};

} // namespace kthost
