#include "kthost/documents/CommandRegistry.h"

#include "kthost/documents/DocumentManager.h"
#include "kthost/documents/PrintSink.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::wstring> wordsSeen;
KtApDocument* documentSeen = nullptr;
KtAp::DocLockMode lockSeen = KtAp::kNone;

bool look(KtApDocument* document, const KtArray<const wchar_t*>& words) {
    documentSeen = document;
    lockSeen = document->lockMode();
    wordsSeen.assign(words.begin(), words.end());
    return true;
}

bool refuse(KtApDocument* /*document*/, const KtArray<const wchar_t*>& /*words*/) {
    ktedFail(L"there is no such part");
    return false;
}

bool removeItself(KtApDocument* /*document*/, const KtArray<const wchar_t*>& /*words*/) {
    return ktedRemoveCommand(L"parts");
}

class ModuleCommands : public testing::Test {
protected:
    void SetUp() override { wordsSeen.clear(); }

    std::vector<std::wstring> names() const {
        std::vector<std::wstring> all;
        for (const auto& [name, command] : registry.commands()) {
            all.push_back(name);
        }
        return all;
    }

    CommandRegistry registry;
    DocumentManager documents;
    Document& plan = documents.create(L"plan", nullptr);
};

TEST_F(ModuleCommands, AreFoundByTheirNames) {
    EXPECT_TRUE(ktedAddCommand(L"parts", L"parts [BLOCK]", look));
    ASSERT_NE(registry.find(L"parts"), nullptr);
    EXPECT_EQ(registry.find(L"parts")->usage, L"parts [BLOCK]");
}

TEST_F(ModuleCommands, AreListedByName) {
    ktedAddCommand(L"parts", L"", look);
    ktedAddCommand(L"count", L"", look);
    EXPECT_THAT(names(), ElementsAre(L"count", L"parts"));
}

TEST_F(ModuleCommands, HaveTheirNamesToThemselves) {
    EXPECT_TRUE(ktedAddCommand(L"parts", L"", look));
    EXPECT_FALSE(ktedAddCommand(L"parts", L"", refuse));
    EXPECT_EQ(registry.find(L"parts")->function, look);
}

TEST_F(ModuleCommands, TakeNoNameOfTheHostsOwn) {
    registry.reserve(L"open");
    EXPECT_FALSE(ktedAddCommand(L"open", L"", look));
}

TEST_F(ModuleCommands, NeedANameAndAFunction) {
    EXPECT_FALSE(ktedAddCommand(L"", L"", look));
    EXPECT_FALSE(ktedAddCommand(nullptr, L"", look));
    EXPECT_FALSE(ktedAddCommand(L"parts", L"", nullptr));
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ModuleCommands, DoWithoutUsage) {
    ASSERT_TRUE(ktedAddCommand(L"parts", nullptr, look));
    EXPECT_EQ(registry.find(L"parts")->usage, L"");
}

TEST_F(ModuleCommands, AreGoneOnceRemoved) {
    ktedAddCommand(L"parts", L"", look);
    EXPECT_TRUE(ktedRemoveCommand(L"parts"));
    EXPECT_EQ(registry.find(L"parts"), nullptr);
    EXPECT_FALSE(ktedRemoveCommand(L"parts"));
    EXPECT_FALSE(ktedRemoveCommand(nullptr));
}

TEST_F(ModuleCommands, GetTheirDocumentLockedAndTheirWords) {
    ktedAddCommand(L"parts", L"", look);
    EXPECT_TRUE(runModuleCommand(documents, plan, *registry.find(L"parts"), {L"R 1", L"to"}));
    EXPECT_EQ(documentSeen, &plan);
    EXPECT_EQ(lockSeen, KtAp::kWrite);
    EXPECT_THAT(wordsSeen, ElementsAre(L"R 1", L"to"));
}

TEST_F(ModuleCommands, FailForTheReasonThatTheyGive) {
    ktedAddCommand(L"parts", L"", refuse);
    const CommandOutcome outcome = runModuleCommand(documents, plan, *registry.find(L"parts"), {});
    EXPECT_EQ(outcome.result, CommandResult::failed);
    EXPECT_EQ(outcome.reason, "there is no such part");
}

TEST_F(ModuleCommands, MayRemoveThemselves) {
    ktedAddCommand(L"parts", L"", removeItself);
    EXPECT_TRUE(runModuleCommand(documents, plan, *registry.find(L"parts"), {}));
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(ModuleCommands, AreDroppedByTheAddressesOfTheirFunctions) {
    ktedAddCommand(L"parts", L"", look);
    ktedAddCommand(L"count", L"", refuse);
    const void* leaving = reinterpret_cast<const void*>(look);
    registry.removeWhere([leaving](const void* address) { return address == leaving; });
    EXPECT_THAT(names(), ElementsAre(L"count"));
}

TEST(Printing, GoesToTheSink) {
    std::wstring printed;
    setPrintSink([&printed](std::wstring_view line) { printed = line; });
    ktedPrint(L"12 rows");
    setPrintSink({});
    EXPECT_EQ(printed, L"12 rows");
}

TEST(Printing, GoesToStandardOutputWithoutASink) {
    testing::internal::CaptureStdout();
    ktedPrint(L"12 \u03A9");
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "12 \xCE\xA9\n");
}

TEST(Printing, OfNothingIsAnEmptyLine) {
    std::vector<std::wstring> printed;
    setPrintSink([&printed](std::wstring_view line) { printed.emplace_back(line); });
    ktedPrint(nullptr);
    setPrintSink({});
    EXPECT_THAT(printed, ElementsAre(L""));
}

TEST(CommandRegistryEnd, LeavesNowhereToAddCommands) {
    EXPECT_FALSE(ktedAddCommand(L"parts", L"", look));
    EXPECT_FALSE(ktedRemoveCommand(L"parts"));
}

} // namespace
} // namespace kthost
