#include "tests/model/Twin.h"

#include "tests/model/Observer.h"
#include "tests/model/Unnoticed.h"

#include <KtEd.h>

namespace ktmodel {

namespace {

Twin* currentTwin = nullptr;

std::string answerText(bool value) {
    return value ? "success" : "failure";
}

} // namespace

Twin::Twin() {
    const Unnoticed unnoticed;
    currentTwin = this;
    model_.setTimerOrder(blocksTimerIsFirst);
    ktedRegisterFilterWinMsg(&watchMessages);
}

Twin::~Twin() {
    const Unnoticed unnoticed;
    ktedRemoveFilterWinMsg(&watchMessages);
    currentTwin = nullptr;
}

Twin* Twin::current() {
    return currentTwin;
}

bool Twin::watchMessages(MSG* message) {
    if (message->message == RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK")) {
        currentTwin->model_.passes().abandonDownTo(0);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the message carries its document so
        currentTwin->model_.idleCheckArrives(reinterpret_cast<KtApDocument*>(message->wParam));
    }
    return false;
}

std::string Twin::difference(const std::map<std::wstring, std::vector<GraphQuestion>>& questions) {
    model_.passes().abandonDownTo(0);
    const Snapshot expected = model_.snapshot(questions);
    Snapshot actual = observe(questions);
    actual.idleChecks = model_.takeArrived();
    actual.calls = model_.passes().takeMade();
    return std::exchange(wrongResults_, {}) + ktmodel::difference(expected, actual);
}

void Twin::clientCalled(KtRxCallback callback, void (*real)(KtRxCallback)) {
    model_.passes().callbackBegins(numberOf(callback));
    try {
        real(callback);
    } catch (...) {
        model_.passes().callbackThrows();
        throw;
    }
    model_.passes().callbackReturns();
}

void Twin::note(const char* name, bool expected, bool actual) {
    if (expected != actual) {
        wrongResults_ +=
            std::string(name) + ": expected " + answerText(expected) + ", is " + answerText(actual) + '\n';
    }
}

std::vector<GraphQuestion> allQuestions(const Snapshot& snapshot, const std::wstring& document) {
    std::vector<GraphQuestion> questions;
    const auto entry = snapshot.documents.find(document);
    if (entry == snapshot.documents.end() || !entry->second.blocks) {
        return questions;
    }
    for (const auto& [block, monitor] : entry->second.blocks->monitorOfKey) {
        for (const auto& [container, other] : entry->second.blocks->monitorOfKey) {
            questions.push_back({block, container});
        }
    }
    return questions;
}

} // namespace ktmodel
