#include "fuzz/Allowance.h"
#include "fuzz/Confinement.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFolder.h"
#include "fuzz/ScriptLines.h"
#include "kthost/console/Console.h"
#include "kthost/console/OneLine.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Utf8.h"

#include <algorithm>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

/// Runs any bytes as lines of the console, in a folder of its own. A line that cannot be done has changed
/// nothing, what can be taken back can be done again, what is printed cannot upset a terminal, and in the end
/// nothing is left.
namespace {

/// Lines may copy what all lines before made: what a script takes grows with the square of its length. A
/// table may be far larger than the line that draws it.
constexpr std::size_t kBytesAtLeast = 96U << 20U;
constexpr double kBytesEachSquared = 16;
constexpr std::size_t kBytesOfATable = 10'000'000;
constexpr double kSecondsAtLeast = 8;
constexpr double kSecondsEachSquared = 3e-6;

std::size_t bytesFor(std::string_view script) {
    std::size_t tables = 0;
    for (std::size_t at = script.find("table "); at != std::string_view::npos;
         at = script.find("table ", at + 1)) {
        ++tables;
    }
    const auto length = static_cast<double>(script.size());
    return kBytesAtLeast + tables * kBytesOfATable +
           static_cast<std::size_t>(kBytesEachSquared * length * length);
}

void requireCleanOutput(const std::string& output) {
    require(kthost::findMalformedUtf8(output) == std::string_view::npos, "what is printed is UTF-8 text");
    const bool hasControl = std::any_of(output.begin(), output.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) < ' ' && byte != '\n') || byte == '\x7F';
    });
    require(!hasControl, "what is printed holds no control characters");
}

/// A host with a console, from its start to its end.
class Run {
public:
    Run() {
        console_.run("new plan");
        console_.run("define R");
    }

    void line(const std::string& text) {
        out_.str("");
        const bool comparable = canTakeBack();
        const State before = comparable ? state() : State();
        if (!perform(text) && comparable && canTakeBack()) {
            State after = state();
            after.resize(std::min(after.size(), before.size())); // others may have been opened, and stay
            requireSame(text, before, after);
        }
        requireCleanOutput(out_.str());
        noteUnrecorded();
    }

    bool isQuitting() { return console_.session().isQuitting(); }

    void end() {
        console_.session().held().releaseAll();
        for (kthost::Database* drawing : drawings()) {
            takeBackAndDoAgain(*drawing);
        }
        host_.documents().closeAll();
        for (const std::string& finding : host_.end().findings) {
            require(false, finding);
        }
    }

private:
    /// Of a drawing: its name, all that it holds, and how many steps can be undone and redone.
    using DrawingState = std::tuple<std::wstring, std::wstring, std::size_t, std::size_t>;
    using State = std::vector<DrawingState>;

    static void requireSame(const std::string& line, const State& before, const State& after) {
        if (before != after) {
            std::cerr << "after '" << line << "':\n";
            std::for_each(before.begin(), before.end(), &show);
            std::cerr << "became\n";
            std::for_each(after.begin(), after.end(), &show);
        }
        require(before == after, "a line that cannot be done changes nothing");
    }

    static void show(const DrawingState& drawing) {
        const auto& [name, contents, undoable, redoable] = drawing;
        std::cerr << kthost::toUtf8(name) << ": " << undoable << " to undo, " << redoable << " to redo\n"
                  << kthost::toUtf8(contents);
    }

    bool perform(const std::string& text) {
        try {
            console_.run(text);
            return true;
        } catch (const kthost::CommandError& error) {
            requireCleanOutput(kthost::onOneLine(error.what()));
            return false;
        }
    }

    std::vector<kthost::Database*> drawings() {
        std::vector<kthost::Database*> all;
        for (const kthost::Document* document : host_.documents().documents()) {
            if (document->database() != nullptr) {
                all.push_back(&kthost::hostDatabase(*document->database()));
            }
        }
        return all;
    }

    /// Not what is kept open, nor what is done while changes are not kept.
    bool canTakeBack() {
        const std::vector<kthost::Database*> all = drawings();
        return console_.session().held().count() == 0 &&
               std::all_of(all.begin(), all.end(),
                           [](const kthost::Database* drawing) { return drawing->undoRecording(); });
    }

    State state() {
        State all;
        for (kthost::Database* drawing : drawings()) {
            all.emplace_back(drawing->name(), kthost::dumpDatabase(*drawing), drawing->history().undoable(),
                             drawing->history().redoable());
        }
        return all;
    }

    void noteUnrecorded() {
        for (const kthost::Database* drawing : drawings()) {
            if (!drawing->undoRecording()) {
                unrecorded_.insert(drawing);
            }
        }
    }

    /// Where changes were not kept for a while, the steps around them may lead elsewhere, or nowhere: then
    /// they must only do no harm.
    void takeBackAndDoAgain(kthost::Database& drawing) {
        if (!unrecorded_.contains(&drawing)) {
            requireWayBack(drawing);
            return;
        }
        kthost::UndoHistory& history = drawing.history();
        while (history.undo() == Orbx::eOk) {
        }
        while (history.redo() == Orbx::eOk) {
        }
    }

    static void requireWayBack(kthost::Database& drawing) {
        kthost::UndoHistory& history = drawing.history();
        const std::wstring before = kthost::dumpDatabase(drawing);
        const std::size_t steps = history.undoable();
        for (std::size_t step = 0; step < steps; ++step) {
            require(history.undo() == Orbx::eOk, "every step can be undone");
        }
        for (std::size_t step = 0; step < steps; ++step) {
            require(history.redo() == Orbx::eOk, "every step can be done again");
        }
        require(kthost::dumpDatabase(drawing) == before, "undone and done again, a drawing is what it was");
    }

    std::set<const kthost::Database*> unrecorded_; // drawings whose changes were not kept at some time
    kthost::Host host_;
    std::ostringstream out_;
    kthost::Console console_{host_, out_};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder kFolder;
    static const bool kFilled = (kFolder.copyFrom(KTDX_FUZZ_DRAWINGS), true);
    static_cast<void>(kFilled);
    const std::string script(data, data + size);
    const Allowance allowance(bytesFor(script),
                              kSecondsAtLeast + kSecondsEachSquared * static_cast<double>(size * size));
    Run run;
    for (const std::string& line : linesOf(script)) {
        if (staysInFolder(line) && !run.isQuitting()) {
            run.line(line);
        }
    }
    run.end();
    return 0;
}
