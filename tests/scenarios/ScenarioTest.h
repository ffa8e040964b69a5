#pragma once

#include "kthost/console/Console.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/documents/Host.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <system_error>

namespace kthost {

/// A host with a console and a folder for what is written. The modules are loaded by name, as users do.
class ScenarioTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("ktdx-") + test->test_suite_name() + "-" + test->name();
        for (char& letter : name) {
            letter = letter == '/' ? '-' : letter;
        }
        folder_ = std::filesystem::path(testing::TempDir()) / name;
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

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

    std::string read(const std::string& name) const {
        std::ifstream stream(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    Database& drawing() { return console_.session().drawing(); }

    struct Removal {
        const std::filesystem::path& folder;

        ~Removal() {
            std::error_code ignored; // a test's result does not hang on it
            std::filesystem::remove_all(folder, ignored);
        }
    };

    std::filesystem::path folder_;
    Removal removal_{folder_}; // behind the host, which may have libraries of it open
    Host host_;
    std::ostringstream out_;
    Console console_{host_, out_};
};

} // namespace kthost
