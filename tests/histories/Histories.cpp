#include "tests/histories/Histories.h"

#include "tests/histories/CrashScript.h"
#include "tests/histories/Generator.h"
#include "tests/histories/OwnProcess.h"
#include "tests/histories/Stage.h"

#include <sstream>

namespace histories {

namespace {

std::string kindOf(const std::string& failure) {
    return failure.substr(0, failure.find(':'));
}

std::string asComments(const std::string& text) {
    std::istringstream lines(text);
    std::string comments;
    for (std::string line; std::getline(lines, line);) {
        comments.append("# ").append(line).append("\n");
    }
    return comments;
}

std::string asScript(const History& history) {
    std::string text =
        "\nThis script shows it, beside the modules (Puppets.kmx is built in test_modules/):\n";
    for (const std::string& line : history) {
        text += line + "\n";
    }
    return text;
}

bool endsInACrash(const History& history, const Player& player, Words words) {
    const CrashScript left; // the other process writes its own in the same file, which goes with this
    return isFatal([&] { player(history); }, words);
}

/// Plays lines one by one, and notes them.
class Playing {
public:
    /// False when something is wrong.
    bool run(const std::string& line) {
        outcome_.history.push_back(line);
        script_.add(line);
        outcome_.failure = stage_.run(line);
        return outcome_.failure.empty();
    }

    Outcome end() {
        if (outcome_.failure.empty()) {
            outcome_.failure = stage_.end();
        }
        outcome_.tally = stage_.tally();
        script_.discard();
        return std::move(outcome_);
    }

    kthost::Session& session() { return stage_.session(); }

private:
    CrashScript script_;
    Stage stage_;
    Outcome outcome_;
};

} // namespace

Outcome playRandom(std::uint32_t seed) {
    Playing playing;
    Generator generator(playing.session(), KTDX_HISTORY_DRAWINGS, seed);
    bool well = true;
    for (const std::string& line : generator.opening()) {
        well = well && playing.run(line);
    }
    for (std::size_t count = 0; well && count < generator.length(); ++count) {
        well = playing.run(generator.next());
    }
    return playing.end();
}

Outcome play(const History& history) {
    Playing playing;
    bool well = true;
    for (const std::string& line : history) {
        well = well && playing.run(line);
    }
    return playing.end();
}

History shrinkFault(const Outcome& outcome) {
    const std::string kind = kindOf(outcome.failure);
    return shrink(outcome.history, [&kind](const History& history) {
        const Outcome shorter = play(history);
        return !shorter.failure.empty() && kindOf(shorter.failure) == kind;
    });
}

std::string describeFault(const Outcome& outcome, std::uint32_t seed) {
    const History shortest = shrinkFault(outcome);
    return "seed " + std::to_string(seed) + ", line " + std::to_string(outcome.history.size()) + ": " +
           outcome.failure + asScript(shortest) + asComments(play(shortest).failure);
}

bool crashes(const History& history, const Player& player) {
    return endsInACrash(history, player, Words::dropped);
}

std::string describeCrash(const History& history, const Player& player) {
    const History shortest =
        shrink(history, [&player](const History& shorter) { return crashes(shorter, player); });
    endsInACrash(shortest, player, Words::heard);
    return "it ends in a crash" + asScript(shortest);
}

} // namespace histories
