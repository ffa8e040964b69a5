#pragma once

#include "kthost/console/Console.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/documents/Host.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace kthost {

/// A host with a console and a folder for what is written. The modules are loaded by name, as users do.
class ScenarioTest : public testing::Test {
protected:
    static std::string binary(const std::string& name) { return std::string(KTDX_BINARIES) + "/" + name; }

    static std::string sample() { return std::string(KTDX_SAMPLES) + "/sensor-node.kicad_sch"; }

    void loadAll() {
        run("load \"" + binary("KtDxNotify.kmx") + "\"");
        run("load \"" + binary("PartsList.kmx") + "\"");
    }

    void loadWatcher(const std::string& name) {
        run("load \"" + std::string(KTDX_SCENARIO_MODULES) + "/" + name + "\"");
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

    std::string inFolder(const std::string& name) const { return (folder_ / name).string(); }

    std::string read(const std::string& name) const { return contentsOf(folder_ / name); }

    Database& drawing() { return console_.session().drawing(); }

    TempFolder folder_; // longer than the host, which may have libraries of it open
    Host host_;
    std::ostringstream out_;
    Console console_{host_, out_};
};

} // namespace kthost
