#include "bench/workloads/Stage.h"

#include "bench/drawings/Require.h"

#include <tuple>
#include <utility>

namespace bench {

Stage::Stage() : Stage(std::make_unique<kthost::Database>(L"plan")) {}

Stage::Stage(std::unique_ptr<kthost::Database> drawing)
    : document_(host_.documents().create(L"plan", std::move(drawing))) {}

Stage::~Stage() {
    std::ignore = host_.documents().close(document_); // no command runs
    contender_.reset();                               // some let go of the drawing's objects only as they go
}

void Stage::run(const std::function<void()>& edit) {
    const kthost::CommandOutcome outcome =
        host_.documents().runCommand(document_, L"edit", [&edit](kthost::Document&) {
            edit();
            return kthost::CommandResult::done;
        });
    require(static_cast<bool>(outcome), outcome.reason.c_str());
}

void Stage::idle() {
    host_.loop().pump();
}

void Stage::command(const std::function<void()>& edit) {
    run(edit);
    idle();
}

} // namespace bench
