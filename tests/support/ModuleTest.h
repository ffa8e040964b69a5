#pragma once

#include "app/KtDxApplication.h"
#include "kthost/documents/Host.h"
#include "kthost/runtime/Faults.h"
#include "notify/KtDxTimer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

/// A host, and the module's own values as they are when it has just been loaded. A test leaves them so.
class ModuleTest : public testing::Test {
protected:
    ModuleTest() { gIdleCheckMessage = 0; }

    ~ModuleTest() override {
        EXPECT_EQ(gApplication, nullptr);
        EXPECT_EQ(gTimerCount, 0U);
        EXPECT_EQ(gCmdLineHook, nullptr);
        gIdleCheckMessage = 0;
    }

    /// Announced and current from then on.
    kthost::Document& open(const std::wstring& name) {
        return host_.documents().create(name, std::make_unique<kthost::Database>(name));
    }

    kthost::Document& openWithoutDrawing(const std::wstring& name) {
        return host_.documents().create(name, nullptr);
    }

    static kthost::Faults& faults() { return kthost::Faults::instance(); }

    std::size_t filterCount() const {
        std::size_t count = 0;
        host().loop().filters().inspect([&count](const auto&, const auto&) { ++count; });
        return count;
    }

    bool hears(const KtApDocManagerReactor* reactor) const {
        bool found = false;
        host().documents().reactors().inspect([&](const KtApDocManagerReactor* listener, const auto&) {
            found = found || listener == reactor;
        });
        return found;
    }

    kthost::Host& host() const { return *kthost::Host::current(); }

    kthost::Host host_;
};

/// The application object as initialise makes it, and a document.
class ApplicationTest : public ModuleTest {
protected:
    kthost::Document& document_ = open(L"plan");
    std::unique_ptr<KtDxApplication> application_ = std::make_unique<KtDxApplication>();
};
