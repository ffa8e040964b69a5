#include "tests/soak/Soak.h"

#include "kthost/console/CommandError.h"
#include "kthost/console/DrawingFile.h"
#include "kthost/console/PerformLine.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/reader/PathText.h"
#include "kthost/runtime/Utf8.h"
#include "tests/histories/Drawn.h"
#include "tests/histories/Generator.h"
#include "tests/scenario_modules/puppets/Puppets.h"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace soak {

namespace fs = std::filesystem;

namespace {

using histories::inQuotes;

/// A document that is gone when its round ends keeps so many steps at most.
constexpr std::size_t kStepsOfOthers = 50;

constexpr std::array kModules{"KtDxNotify.kmx", "PartsList.kmx", "test_modules/Puppets.kmx"};

std::string textOf(const fs::path& path) {
    return inQuotes(kthost::toUtf8(kthost::pathText(path)));
}

/// What cannot be taken back would make rounds differ, and modules come and go between rounds.
bool fits(const std::string& line) {
    static constexpr std::array kUnfit{"recording off", "forget", "draw",    "strike",
                                       "as table",      "load ",  "current "};
    return line.starts_with("current ") || line.starts_with("reload ") ||
           std::none_of(kUnfit.begin(), kUnfit.end(),
                        [&](const char* words) { return line.find(words) != std::string::npos; });
}

std::size_t referencesIn(const fs::path& drawing) {
    const auto database = kthost::readDrawing(drawing, L"counted", nullptr);
    std::size_t count = 0;
    for (const bool layouts : {false, true}) {
        for (const KtDbObjectId record : kthost::records(*database, layouts)) {
            count += kthost::referencesIn(record).size();
        }
    }
    return count;
}

} // namespace

Soak::Soak(Settings settings) : settings_(std::move(settings)) {
    host_.clock().set(1'000'000);
    load();
    openKept();
}

void Soak::load() {
    for (const char* module : kModules) {
        demand("load " + textOf(settings_.modules / module));
    }
}

void Soak::unload() {
    for (auto module = kModules.rbegin(); module != kModules.rend(); ++module) {
        demand("unload " + textOf(fs::path(*module).filename()));
    }
}

void Soak::openKept() {
    demand("open " + textOf(settings_.drawing));
    kept_ = console_.session().document().name();
    closeKept_ = "close " + inQuotes(kthost::toUtf8(kept_));
    keptContents_ = contents();
}

Measured Soak::run() {
    const std::size_t rounds = (settings_.commands + kCommandsEach - 1) / kCommandsEach;
    for (std::size_t number = 0; number < rounds; ++number) {
        round(settings_.seed + static_cast<std::uint32_t>(number));
        measured_.memory.push_back(ownMemory());
        measured_.allocated.push_back(allocatedMemory());
        measured_.idleCheck.push_back(static_cast<double>(idleTime_) / static_cast<double>(idleChecks_) *
                                      1e6 / CLOCKS_PER_SEC);
    }
    return std::move(measured_);
}

void Soak::round(std::uint32_t seed) {
    idleTime_ = 0;
    idleChecks_ = 0;
    histories::Generator generator(console_.session(),
                                   kthost::toUtf8(kthost::pathText(settings_.smallDrawings)), seed);
    demand("parts by occurrence");
    demand("puppet 1 attach *");
    demand("open " + textOf(settings_.drawing));
    demand("parts by component as table 5,5");
    for (std::size_t number = 0; number < kCommandsEach; ++number) {
        command(generator.next());
    }
    takeDown();
}

/// One command, done or refused. A line that does not fit is another edit of the drawing that stays.
void Soak::command(const std::string& line) {
    const bool taken = fits(line) && !line.starts_with(closeKept_);
    ++(perform(taken ? line : "copy @1 7,7") ? measured_.done : measured_.refused);
    kthost::Document* document = host_.documents().currentDocument();
    if (document != nullptr && document->name() != kept_ && document->database() != nullptr) {
        kthost::hostDatabase(*document->database()).history().setLimit(kStepsOfOthers);
    }
}

bool Soak::perform(const std::string& line) {
    bool done = true;
    const std::size_t documents = host_.documents().documents().size();
    try {
        kthost::performLine(console_.session(), line);
    } catch (const kthost::CommandError&) {
        done = false;
    } catch (const puppets::Outburst&) {
        done = true; // a client's, as ordered
    }
    measured_.documents += host_.documents().documents().size() < documents ? 1U : 0U;
    const std::clock_t before = std::clock();
    try {
        host_.loop().pump();
    } catch (const puppets::Outburst&) {
        done = true; // what waits behind it comes with the next line
    }
    idleTime_ += std::clock() - before;
    ++idleChecks_;
    return done;
}

void Soak::demand(const std::string& line) {
    try {
        console_.run(line);
    } catch (const puppets::Outburst&) {
        return; // behind the line, which was done
    }
}

void Soak::takeDown() {
    endWhatKeepsHostBusy();
    closeOthers();
    takeBack();
    unload();
    load();
    if (contents() != keptContents_) {
        throw std::runtime_error("the drawing taken back is not what it was");
    }
}

void Soak::endWhatKeepsHostBusy() {
    perform("release");
    for (const kthost::Document* document : host_.documents().documents()) {
        perform("current " + inQuotes(kthost::toUtf8(document->name())));
        perform("dialog off");
        perform("pending 0");
        while (perform("unlock")) {
        }
    }
    perform("typing off");
}

void Soak::closeOthers() {
    const std::vector<kthost::Document*> documents = host_.documents().documents();
    for (const kthost::Document* document : documents) {
        if (document->name() != kept_) {
            demand("close " + inQuotes(kthost::toUtf8(document->name())));
            ++measured_.documents;
        }
    }
    demand("current " + inQuotes(kthost::toUtf8(kept_)));
}

void Soak::takeBack() {
    if (const std::size_t steps = console_.session().drawing().history().undoable(); steps != 0) {
        demand("undo " + std::to_string(steps));
    }
    demand("forget");
}

std::wstring Soak::contents() {
    return kthost::dumpDatabase(console_.session().drawing());
}

const std::vector<std::string>& Soak::end() {
    return host_.end().findings;
}

fs::path largestOf(const std::vector<fs::path>& drawings) {
    fs::path largest;
    std::size_t most = 0;
    for (const fs::path& drawing : drawings) {
        if (const std::size_t count = referencesIn(drawing); largest.empty() || count > most) {
            most = count;
            largest = drawing;
        }
    }
    return largest;
}

double ownMemory() {
    std::ifstream pages("/proc/self/statm");
    double size = 0;
    double resident = 0;
    double shared = 0;
    if (!(pages >> size >> resident >> shared)) {
        throw std::runtime_error("the system does not say how much memory is the process's own");
    }
    return (resident - shared) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

double allocatedMemory() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

} // namespace soak
