#pragma once

#include "kthost/console/Console.h"
#include "kthost/documents/Host.h"
#include "tests/histories/NullStream.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace soak {

struct Settings {
    std::size_t commands = 0;
    std::filesystem::path modules;       ///< where KtDxNotify.kmx and its clients lie
    std::filesystem::path smallDrawings; ///< what is opened and attached on the way
    std::filesystem::path drawing;       ///< the large one
    std::uint32_t seed = 0;
};

/// What was measured at the end of each round.
struct Measured {
    std::vector<double> memory;    ///< of the process's own, bytes
    std::vector<double> allocated; ///< of that, what the program has asked for and not given back
    std::vector<double> idleCheck; ///< mean of the round's idle checks, microseconds of the processor's time
    std::size_t done = 0;          ///< commands that could be done
    std::size_t refused = 0;
    std::size_t documents = 0; ///< closed on the way
};

/// One host from its start to its end, in which a large drawing stays open while others come and go, with the
/// module and its clients loaded. A round is kCommandsEach commands made up at random, some of them in the
/// drawing that stays, some in a second copy of it and in small ones; then all but the first is closed, and
/// the first is taken back to what it was, so that every round begins alike.
class Soak {
public:
    static constexpr std::size_t kCommandsEach = 250;

    /// Throws CommandError when the modules or the drawing cannot be opened.
    explicit Soak(Settings settings);

    Measured run();
    /// What the audit found; to be asked when all has run.
    const std::vector<std::string>& end();

private:
    void load();
    void unload();
    void openKept();
    void round(std::uint32_t seed);
    void command(const std::string& line);
    bool perform(const std::string& line);
    void demand(const std::string& line);
    void takeDown();
    void endWhatKeepsHostBusy();
    void closeOthers();
    void takeBack();
    std::wstring contents();

    Settings settings_;
    kthost::Host host_;
    histories::NullStream out_;
    kthost::Console console_{host_, out_};
    std::wstring kept_;         // name of the document that stays
    std::wstring keptContents_; // what its drawing holds at the end of every round
    std::string closeKept_;
    Measured measured_;
    std::clock_t idleTime_ = 0;
    std::size_t idleChecks_ = 0;
};

/// The one of these drawings that has most references.
std::filesystem::path largestOf(const std::vector<std::filesystem::path>& drawings);

/// Memory that is this process's own and no other's, bytes.
double ownMemory();
double allocatedMemory();

} // namespace soak
