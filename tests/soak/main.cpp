#include "tests/soak/Figures.h"
#include "tests/soak/Soak.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>
#include <vector>

/// soak COMMANDS MODULES SMALL_DRAWINGS DRAWING...: runs so many commands on the largest of the drawings, and
/// says whether the process has grown, whether idle checks have slowed down, and what is left in the end.
/// Exit status 1 when one of them is not as it has to be.
namespace {

/// Rises over the last half that count as none. The system gives memory in pieces, and a small leak may lie
/// in what it has given already: what is allocated is held to less. Numbers of objects are never given twice,
/// for which the host keeps a little for each few thousand of them.
constexpr double kShareThatIsNone = 0.01;
constexpr double kBytesThatAreNone = 1'000'000;
constexpr double kAllocatedThatIsNone = 200'000;
constexpr double kAllocatedEachCommand = 2;
/// The same of the time that an idle check takes, on a machine that has other things to do.
constexpr double kMostRatio = 1.25;

constexpr double kMegabyte = 1'000'000;

bool judge(bool well, const std::string& what) {
    std::cout << (well ? "good: " : "BAD:  ") << what << std::endl;
    return well;
}

std::string number(double value) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << value;
    return text.str();
}

bool judgeMemory(const std::string& what, const std::vector<double>& memory, double none) {
    const std::vector<double> half = soak::lastHalf(memory);
    const double middle = soak::median(half);
    const double most = std::max(kShareThatIsNone * middle, none);
    const double rise = soak::rise(half);
    return judge(rise <= most, what + " of " + number(middle / kMegabyte) + " MB rises by " +
                                   number(rise / kMegabyte) + " MB in the last half (at most " +
                                   number(most / kMegabyte) + ")");
}

bool judgeIdleChecks(const std::vector<double>& times) {
    const double first = soak::median(soak::firstHalf(times));
    const double last = soak::median(soak::lastHalf(times));
    return judge(last <= kMostRatio * first,
                 "an idle check takes " + number(last) + " us in the last half, " + number(last / first) +
                     " of the " + number(first) + " in the first (at most " + number(kMostRatio) + ")");
}

bool judgeEnd(const std::vector<std::string>& findings) {
    for (const std::string& finding : findings) {
        std::cout << "      " << finding << '\n';
    }
    return judge(findings.empty(), "the audit is " + std::string(findings.empty() ? "clean" : "not clean"));
}

soak::Settings settingsOf(const std::vector<std::string>& words) {
    soak::Settings settings;
    settings.commands = std::stoul(words[1]);
    settings.modules = words[2];
    settings.smallDrawings = words[3];
    settings.drawing = soak::largestOf({words.begin() + 4, words.end()});
    settings.seed = std::random_device()();
    return settings;
}

bool run(const soak::Settings& settings) {
    std::cout << "seed " << settings.seed << ", " << settings.drawing.filename().string() << std::endl;
    soak::Soak soak(settings);
    const soak::Measured measured = soak.run();
    std::cout << measured.done << " commands done, " << measured.refused << " refused, " << measured.documents
              << " documents closed" << std::endl;
    const double allocatedThatIsNone =
        std::max(kAllocatedThatIsNone, kAllocatedEachCommand * static_cast<double>(settings.commands) / 2);
    const bool isMemoryGood = judgeMemory("memory", measured.memory, kBytesThatAreNone);
    const bool isAllocatedGood = judgeMemory("memory allocated", measured.allocated, allocatedThatIsNone);
    const bool isIdleGood = judgeIdleChecks(measured.idleCheck);
    return judgeEnd(soak.end()) && isMemoryGood && isAllocatedGood && isIdleGood;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv, argv + argc);
    if (words.size() < 5) {
        std::cerr << "usage: soak COMMANDS MODULES SMALL_DRAWINGS DRAWING...\n";
        return 2;
    }
    try {
        return run(settingsOf(words)) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << "soak: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
