#include "kthost/documents/Host.h"
#include "tests/kthost/modules/TestModules.h"

#include <KtDbObject.h>
#include <KtDbObjectReactor.h>

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace kthost {

namespace {

class Watcher : public KtDbObjectReactor {};

KtDbObject* openTable(const Document& document) {
    KtDbObject* table = nullptr;
    EXPECT_EQ(ktdbOpenObject(table, document.database()->blockTableId(), KtDb::kForNotify), Orbx::eOk);
    return table;
}

TEST(GoneReactor, IsNotReadWhenAModuleIsUnloaded) {
    Host host;
    ASSERT_TRUE(host.modules().load(testModule("GoodModule.kmx")));
    Document& plan = host.documents().create(L"plan", std::make_unique<Database>(L"plan"));
    alignas(Watcher) std::array<std::byte, sizeof(Watcher)> memory{};
    auto* watcher = new (memory.data()) Watcher;
    KtDbObject* table = openTable(plan);
    ASSERT_EQ(table->addReactor(watcher), Orbx::eOk);
    ASSERT_EQ(table->close(), Orbx::eOk);
    watcher->~Watcher();
    // Whoever has its memory next may keep an address of the module there.
    const std::uintptr_t inside = host.modules().find("GoodModule.kmx")->range().begin;
    std::memcpy(memory.data(), &inside, sizeof inside);
    ASSERT_TRUE(host.modules().unload("GoodModule.kmx"));
    EXPECT_THAT(host.report().findings, testing::IsEmpty());
    table = openTable(plan);
    EXPECT_EQ(table->removeReactor(watcher), Orbx::eOk);
    ASSERT_EQ(table->close(), Orbx::eOk);
}

} // namespace

} // namespace kthost
