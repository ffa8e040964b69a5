#include "tests/histories/Stage.h"

#include "kthost/database/DatabaseContents.h"
#include "notify/KtDxCmdLineHook.h"
#include "notify/KtDxTimer.h"
#include "tests/model/Observer.h"
#include "tests/scenario_modules/puppets/PuppetFunctions.h"
#include "tests/scenario_modules/puppets/Puppets.h"

namespace histories {

namespace {

/// Far from 0, where every timer would have fired.
constexpr DWORD kFirstTick = 1'000'000;

constexpr std::uint64_t kMostObjectsOfSmall = 1500;
constexpr std::size_t kChecksOfLarge = 8;

/// The model knows callbacks by their addresses.
std::string withNamesOfPuppets(std::string text) {
    for (std::size_t number = 0; number < puppets::kCount; ++number) {
        const std::string address = std::to_string(ktmodel::numberOf(puppets::functionOf(number)));
        for (std::size_t at = text.find(address); at != std::string::npos; at = text.find(address, at)) {
            text.replace(at, address.size(), "puppet " + std::to_string(number));
        }
    }
    return text;
}

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
    if (document.database() == nullptr) {
        return differenceFromModel({});
    }
    std::string failure =
        mayWait(document) ? "" : differenceFromModel({{document.name(), questions_.about(document)}});
    if (failure.empty()) {
        failure = list_.failure(document);
        failure.insert(0, failure.empty() ? "" : "parts list: ");
    }
    return failure;
}

/// What is recorded of a large drawing takes long to compare, and what went wrong can be seen later as well.
bool Stage::mayWait(kthost::Document& document) const {
    const std::uint64_t objects =
        kthost::ObjectStore::instance().lastHandle(document.database()->contents().slot);
    return objects > kMostObjectsOfSmall && tally_.idleChecks % kChecksOfLarge != 0;
}

std::string
Stage::differenceFromModel(const std::map<std::wstring, std::vector<ktmodel::GraphQuestion>>& questions) {
    if (modules_.twin() == nullptr) {
        return "";
    }
    ++tally_.comparisons;
    const std::string difference = modules_.twin()->difference(questions);
    return difference.empty() ? "" : "model: the module differs from it:\n" + withNamesOfPuppets(difference);
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
    } catch (const puppets::Outburst& outburst) {
        refusal_ = outburst.what();
    }
    return false;
}

Tally Stage::tally() const {
    Tally all = tally_;
    all.listChecks = list_.count();
    return all;
}

std::string Stage::end() {
    if (std::string failure = differenceFromModel({}); !failure.empty()) {
        return failure;
    }
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
