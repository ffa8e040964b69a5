#include "tests/faults/FaultRun.h"
#include "tests/faults/KeptTraces.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <tuple>

namespace {

using kthost::HostCall;

constexpr std::size_t kMostShown = 20;

class FaultSweep : public testing::TestWithParam<std::tuple<std::size_t, bool>> {
protected:
    void expectBearable(const Fault& fault, const RunResult& result) {
        std::string wrong = result.escaped;
        wrong += result.leftOpen == 0 ? "" : "  objects were left open\n";
        const bool withoutHook = isWithoutHook(fault, result);
        const bool boxIsDue = fault.call == HostCall::loadResource;
        wrong +=
            result.initialised || (boxIsDue && result.boxes == 1) ? "" : "  it could not be initialised\n";
        wrong += result.updated || mayNeedLoadingAgain(fault) ? "" : "  a forced update failed\n";
        wrong += differenceOf(undisturbed_.afterUpdate.recorded, result.afterUpdate.recorded,
                              [&](const std::string& fact) { return mayStayAfterUpdate(fault, fact); });
        wrong += differenceOf(undisturbed_.attachedAnew.recorded, result.attachedAnew.recorded,
                              [&](const std::string& fact) { return mayStayAfterUpdate(fault, fact); });
        wrong += differenceOf(undisturbed_.attachedAnew.heard, result.attachedAnew.heard,
                              [&](const std::string& fact) {
                                  return mayStayAfterAttachingAnew(fault, fact) ||
                                         (withoutHook && (fact == "hook" || fact.ends_with(" timers")));
                              });
        if (undisturbed_.calledAfterwards != result.calledAfterwards && !withoutHook) {
            wrong += "  then called: " + result.calledAfterwards + "and not " +
                     undisturbed_.calledAfterwards + "\n";
        }
        for (const std::string& leftover : result.leftovers) {
            wrong += mayBeLeft(fault, leftover) ? "" : "  " + leftover + "\n";
        }
        if (!wrong.empty() && ++shown_ <= kMostShown) {
            ADD_FAILURE() << history_.name << ", " << fault.text() << ":\n" << wrong;
        } else if (!wrong.empty()) {
            ADD_FAILURE() << history_.name << ", " << fault.text();
        }
    }

    void sweep(FaultPhase phase, std::optional<HostCall> call, std::size_t count) {
        for (std::size_t k = 1; k <= count; ++k) {
            const Fault fault{phase, call, k, std::get<1>(GetParam())};
            expectBearable(fault, run(history_, fault));
        }
        faults_ += count;
    }

    void sweepCalls(FaultPhase phase) {
        const RunResult counted = run(history_, {phase, {}, 0, false});
        for (std::size_t kind = 0; kind < counted.calls.size(); ++kind) {
            sweep(phase, static_cast<HostCall>(kind), counted.calls[kind]);
        }
    }

    void say(const char* what) const {
        std::cout << history_.name << ": " << faults_ << ' ' << what
                  << (std::get<1>(GetParam()) ? " and all after, one a run" : ", one a run") << '\n';
    }

    const History& history_ = histories().at(std::get<0>(GetParam()));
    const RunResult undisturbed_ = run(history_, {});
    std::size_t faults_ = 0;
    std::size_t shown_ = 0;
};

TEST_P(FaultSweep, IsPlayedWithoutAFault) {
    EXPECT_EQ(undisturbed_.escaped, "");
    EXPECT_TRUE(undisturbed_.updated);
    EXPECT_TRUE(undisturbed_.leftovers.empty());
    EXPECT_NE(undisturbed_.calledAfterwards, "");
}

TEST_P(FaultSweep, BearsEveryFailingCallOfTheHost) {
    sweepCalls(FaultPhase::play);
    EXPECT_GT(faults_, 100U);
    say("calls of the host failed");
}

TEST_P(FaultSweep, IsUnloadedWhateverCallOfTheHostFails) {
    sweepCalls(FaultPhase::unload);
    EXPECT_GT(faults_, 5U);
    say("calls of the host failed while unloading");
}

TEST_P(FaultSweep, BearsEveryFailingAllocationOfItsOwn) {
    sweep(FaultPhase::play, {}, undisturbed_.allocations);
    EXPECT_GT(faults_, 10U);
    say("allocations failed");
}

std::string nameOfParameter(const testing::TestParamInfo<std::tuple<std::size_t, bool>>& info) {
    return std::string(histories().at(std::get<0>(info.param)).name) +
           (std::get<1>(info.param) ? "FromThenOn" : "Once");
}

INSTANTIATE_TEST_SUITE_P(Histories, FaultSweep,
                         testing::Combine(testing::Range(std::size_t{0}, histories().size()),
                                          testing::Bool()),
                         nameOfParameter);

} // namespace
