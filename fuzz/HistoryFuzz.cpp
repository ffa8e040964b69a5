#include "fuzz/Confinement.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchFolder.h"
#include "fuzz/ScriptLines.h"
#include "tests/histories/Generator.h"
#include "tests/histories/Stage.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

/// Plays any bytes as a history of commands and holds the module against the model at every idle check. A
/// line
/// "~SEED COUNT" stands for so many lines that the generator makes up there and then, one "~open SEED" for
/// the lines with which it begins a history.
namespace {

constexpr std::size_t kMostLines = 300;

/// The generator makes few large drawings; here they would be most of the work.
bool isLarge(const histories::History& opening) {
    return opening.size() > 250;
}

class Play {
public:
    /// False when there have been lines enough.
    bool play(std::string_view line) {
        if (line.starts_with("~open ")) {
            playOpening(numberIn(line.substr(6)));
        } else if (line.starts_with('~')) {
            const std::size_t space = line.find(' ');
            playMadeUp(numberIn(line.substr(1)),
                       space == std::string_view::npos ? 1 : numberIn(line.substr(space + 1)));
        } else {
            run(std::string(line));
        }
        return lines_.size() < kMostLines;
    }

    void end() { judge(stage_.end()); }

private:
    static std::uint32_t numberIn(std::string_view text) {
        std::uint32_t number = 1;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
    }

    void playOpening(std::uint32_t seed) {
        const histories::History opening = histories::Generator(stage_.session(), ".", seed).opening();
        if (!isLarge(opening)) {
            std::for_each(opening.begin(), opening.end(), [this](const std::string& line) { run(line); });
        }
    }

    void playMadeUp(std::uint32_t seed, std::uint32_t count) {
        histories::Generator generator(stage_.session(), ".", seed);
        for (; count > 0 && lines_.size() < kMostLines; --count) {
            run(generator.next());
        }
    }

    void run(const std::string& line) {
        lines_.push_back(line);
        judge(stage_.run(line));
    }

    /// A failure comes with a script that can be played by itself.
    void judge(const std::string& failure) {
        if (!failure.empty()) {
            std::cerr << failure << "\nThis script shows it:\n" << scriptOf(lines_);
            require(false, "the module does what the model says");
        }
    }

    histories::Stage stage_;
    histories::History lines_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const ScratchFolder kFolder;
    static const bool kFilled = (kFolder.copyFrom(KTDX_FUZZ_DRAWINGS), true);
    static_cast<void>(kFilled);
    Play play;
    for (const std::string& line : linesOf({reinterpret_cast<const char*>(data), size})) {
        if (staysInFolder(line) && !play.play(line)) {
            break;
        }
    }
    play.end();
    return 0;
}
