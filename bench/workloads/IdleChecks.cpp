// Idle checks at which nothing has changed.

#include "bench/drawings/Callbacks.h"
#include "bench/drawings/ReferenceDrawing.h"
#include "bench/drawings/Require.h"
#include "bench/report/Names.h"
#include "bench/workloads/Stage.h"
#include "bench/workloads/Workloads.h"

#include <AppFramework.h>
#include <WindowSystem.h>

namespace bench {

namespace {

/// A watched drawing with one reference, and as many callbacks at idle checks as the setting's size.
class IdleScene {
public:
    explicit IdleScene(const Setting& setting) : size_(setting.size) {
        stage_.enter(setting.column);
        stage_.contender().prepare();
        require(stage_.contender().attach({drawing_.definitions().front()}, &called), "attached");
        for (const KtRxCallback callback : callbacks(setting.size)) {
            require(stage_.contender().attachTimer(callback), "attached to the timer");
        }
        stage_.command([] {}); // from which on the message is registered
    }

    /// The message that is posted when a command has ended, and its handling.
    void check() {
        const CWinThread* thread = AfxGetThread();
        PostMessageW(thread->m_pMainWnd->m_hWnd, message_, reinterpret_cast<WPARAM>(&stage_.document()), 0);
        stage_.idle();
    }

    std::size_t size() const { return size_; }

private:
    std::size_t size_;
    Stage stage_;
    ReferenceDrawing drawing_{stage_.database(), 1};
    UINT message_ = RegisterWindowMessageW(L"WM_KTDX_IDLE_CHECK");
};

void checkOften(Round& round, IdleScene& scene) {
    while (round.next()) {
        scene.check();
    }
}

std::size_t passesForCallbacks(std::size_t callbacks) {
    constexpr std::size_t kCalls = 1'000'000;
    return callbacks < 10 ? kCalls / 10 : kCalls / callbacks;
}

double oneOrCallbacks(const IdleScene& scene) {
    return scene.size() == 0 ? 1.0 : static_cast<double>(scene.size());
}

} // namespace

void planIdleChecks(Plan& plan, Scale scale) {
    Family<IdleScene> family;
    family.name = "idle";
    family.sizes = {0, 1, 100, 10'000};
    family.repetitions = repetitionsOf(scale);
    family.workloads = {
        {kIdleCheck, "callback", &checkOften, &passesForCallbacks, &oneOrCallbacks, nullptr},
    };
    plan.add(family);
}

} // namespace bench
