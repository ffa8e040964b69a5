#pragma once

#include "kthost/runtime/ModuleLoader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

/// Where the modules of this folder are once they are built.
inline std::filesystem::path testModule(const std::string& fileName) {
    return std::filesystem::path(KTHOST_TEST_MODULES) / fileName;
}

/// A function that a loaded module exports; null, and the test has failed, when it is not there.
template <typename Function>
Function* exportedFunction(const kthost::ModuleLoader& modules, const char* module, const char* symbol) {
    void* address = modules.exportOf(module, symbol);
    EXPECT_NE(address, nullptr) << module << " has no " << symbol;
    return reinterpret_cast<Function*>(address);
}
