#include "tests/histories/CrashScript.h"

#include <gtest/gtest.h>

#include <random>
#include <system_error>

namespace histories {

namespace {

/// Several of these programs run at the same time.
const std::string& programName() {
    static const std::string name = "ktdx-history-" + std::to_string(std::random_device()());
    return name;
}

} // namespace

CrashScript::CrashScript()
    : file_(std::filesystem::path(testing::TempDir()) / (programName() + ".script")),
      stream_(file_) {}

void CrashScript::discard() {
    if (stream_.is_open()) {
        stream_.close();
        std::error_code ignored; // a file left behind harms nobody
        std::filesystem::remove(file_, ignored);
    }
}

} // namespace histories
