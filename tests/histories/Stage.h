#pragma once

#include "kthost/console/Console.h"
#include "kthost/documents/Host.h"
#include "tests/histories/IdleChecks.h"
#include "tests/histories/InProcessModules.h"
#include "tests/histories/ListCheck.h"
#include "tests/histories/NullStream.h"
#include "tests/histories/Questions.h"
#include "tests/histories/Tally.h"

#include <map>
#include <string>
#include <vector>

namespace histories {

/// A fresh host with a console on which one history is played, and what is expected of it behind every line.
class Stage {
public:
    Stage();

    /// Runs one line of a `kthost` script; one that cannot be done does nothing. Empty when everything is as
    /// it has to be; otherwise which check failed, a colon, and what is wrong.
    std::string run(const std::string& line);
    /// Takes everything down in the order in which the host does, and says the same of what is left behind.
    std::string end();

    kthost::Session& session() { return console_.session(); }

    const InProcessModules& modules() const { return modules_; }

    Tally tally() const;

    /// What the latest line printed is not kept; why it could not be done is.
    const std::string& refusal() const { return refusal_; }

private:
    bool perform(const std::string& line);
    std::string failureAt(kthost::Document& document);
    bool mayWait(kthost::Document& document) const;
    std::string
    differenceFromModel(const std::map<std::wstring, std::vector<ktmodel::GraphQuestion>>& questions);

    kthost::Host host_;
    NullStream out_;
    kthost::Console console_{host_, out_};
    IdleChecks idleChecks_;
    InProcessModules modules_;
    ListCheck list_{console_.session(), modules_};
    Questions questions_;
    Tally tally_;
    std::string refusal_;
};

} // namespace histories
