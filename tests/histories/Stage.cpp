#include "tests/histories/Stage.h"

#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxTimer.h"

namespace histories {

namespace {

/// Far from 0, where every timer would have fired.
constexpr DWORD kFirstTick = 1'000'000;

} // namespace

Stage::Stage() {
    host_.clock().set(kFirstTick);
}

std::string Stage::run(const std::string& line) {
    list_.beforeLine();
    const bool done = perform(line);
    Tally::Lines& lines = tally_.lines[kindOfLine(line)];
    ++(done ? lines.done : lines.refused);
    list_.afterLine(line, done);
    kthost::Document* document = idleChecks_.takeDone();
    tally_.idleChecks += document == nullptr ? 0U : 1U;
    return document == nullptr ? "" : failureAt(*document);
}

std::string Stage::failureAt(kthost::Document& document) {
    if (modules_.twin() != nullptr) {
        const std::string difference =
            modules_.twin()->difference({{document.name(), questions_.about(document)}});
        if (!difference.empty()) {
            return "model: the module differs from it:\n" + difference;
        }
    }
    const std::string failure = list_.failure(document);
    return failure.empty() ? "" : "parts list: " + failure;
}

bool Stage::perform(const std::string& line) {
    refusal_.clear();
    try {
        if (!modules_.run(line)) {
            console_.run(line);
        }
        return true;
    } catch (const kthost::CommandError& error) {
        refusal_ = error.what();
        return false;
    }
}

Tally Stage::tally() const {
    Tally all = tally_;
    all.listChecks = list_.count();
    return all;
}

std::string Stage::end() {
    console_.session().held().releaseAll();
    host_.documents().closeAll();
    modules_.unloadAll();
    if (gTimerCount != 0 || gCmdLineHook != nullptr) {
        return "end: a timer is left";
    }
    // What hears documents for this stage goes with it.
    host_.documents().removeReactor(&idleChecks_);
    std::string findings;
    for (const std::string& finding : host_.end().findings) {
        findings += "\n  " + finding;
    }
    return findings.empty() ? "" : "end: something is left behind:" + findings;
}

} // namespace histories
