#pragma once

#include "kthost/console/Console.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/documents/Host.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace kthost {

/// A host with a console, and with an empty drawing "plan" that holds a block "R".
class ConsoleTest : public testing::Test {
protected:
    ConsoleTest() {
        run("new plan");
        run("define R");
        out_.str("");
    }

    /// Output of a line that has to work.
    std::string run(const std::string& line) {
        out_.str("");
        console_.run(line);
        return out_.str();
    }

    /// Why a line cannot be done; empty when it can.
    std::string failure(const std::string& line) {
        try {
            console_.run(line);
            return "";
        } catch (const CommandError& error) {
            return error.what();
        }
    }

    Database& drawing() { return console_.session().drawing(); }

    std::wstring dump() { return dumpDatabase(drawing()); }

    Host host_;
    std::ostringstream out_;
    Console console_{host_, out_};
};

} // namespace kthost
