#include "kthost/window/MainWindow.h"

#include "kthost/audit/Trace.h"
#include "kthost/reader/Utf8.h"
#include "kthost/runtime/Report.h"

namespace kthost {

namespace {

constexpr int kAnswerOk = 1;

MainWindow* currentWindow = nullptr;

} // namespace

MainWindow::MainWindow() {
    // Handles are only compared, never followed; the window's own address is one that nothing else has.
    window_.m_hWnd = reinterpret_cast<HWND>(&window_);
    thread_.m_pMainWnd = &window_;
    currentWindow = this;
}

MainWindow::~MainWindow() {
    currentWindow = nullptr;
}

MainWindow* MainWindow::current() {
    return currentWindow;
}

int MainWindow::showMessageBox(const wchar_t* text, UINT type, UINT helpId) {
    messageBoxes_.push_back({text == nullptr ? L"" : text, type, helpId});
    return kAnswerOk;
}

} // namespace kthost

CWinThread* AfxGetThread() {
    kthost::MainWindow* window = kthost::MainWindow::current();
    return window == nullptr ? nullptr : window->thread();
}

int AfxMessageBox(const wchar_t* text, UINT type, UINT helpId) {
    if (kthost::tracing()) {
        kthost::TraceLine("message box").field("text", text).field("type", std::int64_t{type});
    }
    kthost::report(kthost::toUtf8(text == nullptr ? L"" : text));
    kthost::MainWindow* window = kthost::MainWindow::current();
    return window == nullptr ? kthost::kAnswerOk : window->showMessageBox(text, type, helpId);
}
