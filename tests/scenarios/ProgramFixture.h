#pragma once

#include "tests/program/RunProgram.h"

#include <SystemPath.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

/// The programs themselves, in a folder of their own.
class ProgramFixture : public testing::Test {
protected:
    using Words = std::vector<std::string>;

    void SetUp() override {
        std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::replace(name.begin(), name.end(), '/', '-');
        folder_ = std::filesystem::path(testing::TempDir()) / ("ktdx-program-" + name);
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }

    void TearDown() override {
        std::error_code ignored; // a system's services may keep a program's streams open for a while
        std::filesystem::remove_all(folder_, ignored);
    }

    static std::string binary(const std::string& name) { return std::string(KTDX_BINARIES) + "/" + name; }

    static std::string sample(const std::string& name) { return std::string(KTDX_SAMPLES) + "/" + name; }

    static std::string utf8(const std::filesystem::path& path) {
        const std::u8string text = path.generic_u8string();
        return {text.begin(), text.end()};
    }

    static std::string read(const std::filesystem::path& file) {
        std::ifstream stream(systemPath(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    static void write(const std::filesystem::path& file, const std::string& text) {
        std::ofstream(systemPath(file), std::ios::binary) << text;
    }

    /// Exit status.
    int run(Words arguments, std::string input = "") {
        return runProgram("kthost", {.arguments = std::move(arguments), .input = std::move(input)});
    }

    int runProgram(const std::string& name, const program::Given& given) {
        outcome_ = program::run(binary(name), folder_, given);
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

    std::filesystem::path folder_;
    program::Outcome outcome_;
};
