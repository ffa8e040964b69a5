#include "tests/faults/FaultRun.h"

#include "kthost/database/OpenObjects.h"
#include "tests/faults/ModuleMemory.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

using kthost::Faults;
using kthost::HostCall;

constexpr auto kKinds = static_cast<std::size_t>(HostCall::kCount);

constexpr std::array<const char*, kKinds> kCallNames{"openObject",
                                                     "addReactor",
                                                     "removeReactor",
                                                     "newTableIterator",
                                                     "getRecordId",
                                                     "getName",
                                                     "getIdAt",
                                                     "getBlockReferenceIds",
                                                     "getErasedBlockReferenceIds",
                                                     "attributeIterator",
                                                     "entityIterator",
                                                     "getXData",
                                                     "createTable",
                                                     "originalBlockTableRecord",
                                                     "getEvalGraph",
                                                     "getRepresentations",
                                                     "documentIterator",
                                                     "documentManager",
                                                     "registerFilter",
                                                     "removeFilter",
                                                     "loadResource",
                                                     "freeResource"};

/// Has the fault happen from its construction to its destruction, and counts.
class Armed {
public:
    Armed(const Fault& fault, FaultPhase phase, RunResult& result)
        : result_(fault.phase == phase ? &result : nullptr) {
        if (result_ == nullptr) {
            return;
        }
        Faults::instance().reset();
        if (fault.k != 0 && fault.call) {
            Faults::instance().fail(*fault.call, fault.k, Orbx::eTooManyReaders, fault.andAllAfter);
        }
        memory_ = std::make_unique<modulememory::Failing>(fault.call ? 0 : fault.k, fault.andAllAfter);
    }

    Armed(const Armed&) = delete;
    Armed& operator=(const Armed&) = delete;

    ~Armed() {
        if (result_ == nullptr) {
            return;
        }
        result_->allocations = modulememory::Failing::count();
        memory_.reset();
        for (std::size_t kind = 0; kind < kKinds; ++kind) {
            result_->calls.push_back(Faults::instance().calls(static_cast<HostCall>(kind)));
        }
        Faults::instance().reset();
    }

private:
    RunResult* result_;
    std::unique_ptr<modulememory::Failing> memory_;
};

/// Whichever order the addresses of their timers are in.
std::string sorted(std::string calls) {
    std::ranges::sort(calls);
    return calls;
}

/// Without an application object there is nothing to bring up to date: the module is loaded once more.
void recover(Stage& stage, RunResult& result) {
    stage.open(L"afterwards"); // with a record of its own, behind which the others are looked over
    result.updated = stage.forceUpdates();
    if (!result.updated) {
        stage.unload();
        stage.load();
        stage.forceUpdates();
    }
    result.afterUpdate = stage.observe();
    stage.attachAnew();
    stage.attachAnew(); // what a failing detachment could not let go of goes at the next one
    result.attachedAnew = stage.observe();
    stage.takeCalls();
    stage.touchEverything();
    result.calledAfterwards = sorted(stage.takeCalls());
}

} // namespace

const char* nameOf(HostCall call) {
    return kCallNames.at(static_cast<std::size_t>(call));
}

std::string Fault::text() const {
    return std::string(call ? nameOf(*call) : "allocation") + " " + std::to_string(k) +
           (andAllAfter ? " and all after" : "") + (phase == FaultPhase::unload ? " of unloading" : "");
}

RunResult run(const History& history, const Fault& fault) {
    RunResult result;
    Stage stage;
    history.prepare(stage);
    {
        const Armed armed(fault, FaultPhase::play, result);
        stage.load();
        result.initialised = stage.isLoaded();
        history.play(stage);
    }
    result.boxes = stage.host().window().messageBoxes().size();
    result.leftOpen = kthost::openObjects().size();
    recover(stage, result);
    {
        const Armed armed(fault, FaultPhase::unload, result);
        stage.unload();
    }
    result.leftovers = stage.host().end().findings;
    result.leftovers.insert(result.leftovers.end(), stage.leftWithDocuments().begin(),
                            stage.leftWithDocuments().end());
    result.escaped = stage.escaped();
    return result;
}
