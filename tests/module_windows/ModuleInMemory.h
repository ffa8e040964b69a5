#pragma once

#include <KtRxCallback.h>

#include "kthost/documents/Host.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

/// A host with the module in memory, and what a client does with it.
class ModuleInMemory : public testing::Test {
protected:
    static constexpr const char* kName = "KtDxNotify.kmx";

    void SetUp() override { ASSERT_TRUE(host_.modules().load(std::filesystem::path(KTDX_BINARIES) / kName)); }

    template <typename Function>
    Function* exported(const char* name) {
        return reinterpret_cast<Function*>(host_.modules().exportOf(kName, name));
    }

    kthost::Document& open(const std::wstring& name) {
        return host_.documents().create(name, std::make_unique<kthost::Database>(name));
    }

    /// Has the callback called at every idle check.
    void attach(kthost::Document& document, KtRxCallback callback) {
        using Attach = std::int32_t(KtApDocument*, KtRxCallback, std::uint32_t, std::int32_t);
        ASSERT_EQ(exported<Attach>("ktdxDocTimerAttach")(&document, callback, 0, 1), 1);
    }

    /// A command that does nothing; the module posts its idle check at the end of it.
    void runCommand(kthost::Document& document) {
        ASSERT_TRUE(host_.documents().runCommand(
            document, L"nothing", [](kthost::Document&) { return kthost::CommandResult::done; }));
    }

    kthost::Host host_;
};
