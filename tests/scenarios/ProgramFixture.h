#pragma once

#include "tests/program/RunProgram.h"
#include "tests/support/TempFolder.h"

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

/// The programs themselves, in a folder of their own.
class ProgramFixture : public testing::Test {
protected:
    using Words = std::vector<std::string>;

    static std::string binary(const std::string& name) { return std::string(KTDX_BINARIES) + "/" + name; }

    static std::string sample(const std::string& name) { return std::string(KTDX_SAMPLES) + "/" + name; }

    /// The name of its copy in the folder. A template has to be one: nobody else may have it open while a
    /// program reads it, and other tests read the sample.
    std::string copyOfSample(const std::string& name) const {
        folder_.file(name, read(sample(name)));
        return name;
    }

    static std::string utf8(const std::filesystem::path& path) {
        const std::u8string text = path.generic_u8string();
        return {text.begin(), text.end()};
    }

    static std::string read(const std::filesystem::path& file) { return contentsOf(file); }

    static void write(const std::filesystem::path& file, const std::string& text) {
        std::ofstream(systemPath(file), std::ios::binary) << text;
    }

    /// Exit status.
    int run(Words arguments, std::string input = "") {
        return runProgram("kthost", {.arguments = std::move(arguments), .input = std::move(input)});
    }

    int runProgram(const std::string& name, const program::Given& given) {
        outcome_ = program::run(binary(name), folder_.path(), given);
        return outcome_.status;
    }

    int runScript(const std::string& script, Words arguments = {}) {
        write(folder_ / "test.script", script);
        arguments.insert(arguments.begin(), {"--script", scriptName()});
        return run(std::move(arguments));
    }

    std::string scriptName() const { return utf8(folder_ / "test.script"); }

    static Words allModules() {
        return {"--load", binary("KtDxNotify.kmx"), "--load", binary("PartsList.kmx")};
    }

    TempFolder folder_;
    program::Outcome outcome_;
};
