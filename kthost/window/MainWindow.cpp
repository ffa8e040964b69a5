#include "kthost/window/MainWindow.h"

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Report.h"
#include "kthost/runtime/Utf8.h"
#include "kthost/window/SystemQueue.h"
#include "kthost/window/WindowCalls.h"

namespace kthost {

namespace {

constexpr int kAnswerOk = 1;

MainWindow* currentWindow = nullptr;

} // namespace

MainWindow::MainWindow() {
    setPresent(true);
    currentWindow = this;
}

MainWindow::~MainWindow() {
    setPresent(false);
    setInputWaiting(false);
    currentWindow = nullptr;
}

MainWindow* MainWindow::current() {
    return currentWindow;
}

void MainWindow::setPresent(bool present) {
    if (present == isPresent()) {
        return;
    }
    if (present) {
        window_.m_hWnd = createHiddenWindow(window_);
        thread_.m_pMainWnd = &window_;
    } else {
        thread_.m_pMainWnd = nullptr;
        destroyHiddenWindow(window_.m_hWnd);
    }
}

void MainWindow::setInputWaiting(bool waiting) {
    inputWaiting_ = waiting;
    setAnswered(WindowCall::getInputState, waiting);
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
