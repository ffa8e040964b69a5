#include "kthost/audit/Trace.h"

#include "kthost/audit/TraceIds.h"
#include "kthost/runtime/ModuleLoader.h"
#include "tests/kthost/modules/TestModules.h"
#include "tests/support/TempFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace kthost {
namespace {

using testing::HasSubstr;

class Trace : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(openTrace(file)); }

    void TearDown() override {
        closeTrace();
        setTraceIdDescriber({});
    }

    std::string written() const { return contentsOf(file); }

    /// What is written between the event and the end of a line with one field.
    template <typename Value>
    std::string fieldWith(Value value) {
        TraceLine("e").field("f", value);
        const std::string text = written();
        const std::string before = R"({"n": 1, "event": "e", "f": )";
        EXPECT_THAT(text, testing::StartsWith(before));
        return text.substr(before.size(), text.size() - before.size() - 2);
    }

    TempFolder folder;
    std::filesystem::path file = folder / "trace.jsonl";
};

TEST_F(Trace, WritesOneObjectALineNumberedFromOne) {
    TraceLine("a").field("x", 1);
    static_cast<void>(TraceLine("b"));
    EXPECT_EQ(written(), "{\"n\": 1, \"event\": \"a\", \"x\": 1}\n{\"n\": 2, \"event\": \"b\"}\n");
}

TEST_F(Trace, WritesEachLineAtOnce) {
    static_cast<void>(TraceLine("a"));
    EXPECT_EQ(written(), "{\"n\": 1, \"event\": \"a\"}\n");
}

TEST_F(Trace, IsOpenUntilItIsClosed) {
    EXPECT_TRUE(tracing());
    closeTrace();
    EXPECT_FALSE(tracing());
}

TEST_F(Trace, ReplacesWhatTheFileHeldAndBeginsToCountAnew) {
    static_cast<void>(TraceLine("a"));
    ASSERT_TRUE(openTrace(file));
    static_cast<void>(TraceLine("b"));
    EXPECT_EQ(written(), "{\"n\": 1, \"event\": \"b\"}\n");
}

TEST_F(Trace, CannotBeOpenedWhereThereIsNoFolder) {
    EXPECT_FALSE(openTrace(file / "nowhere" / "trace.jsonl"));
    EXPECT_FALSE(tracing());
}

TEST_F(Trace, CanBeOpenedAfterAFailure) {
    EXPECT_FALSE(openTrace(file / "nowhere"));
    EXPECT_TRUE(openTrace(file));
}

TEST_F(Trace, EscapesQuotesAndBackslashes) {
    EXPECT_EQ(fieldWith(R"(a "b" \c)"), R"("a \"b\" \\c")");
}

TEST_F(Trace, EscapesControlCharacters) {
    EXPECT_EQ(fieldWith("a\nb\x01\x7F"), R"("a\u000ab\u0001\u007f")");
}

TEST_F(Trace, KeepsAZeroCharacter) {
    EXPECT_EQ(fieldWith(std::wstring_view(L"a\0b", 3)), R"("a\u0000b")");
}

TEST_F(Trace, WritesWideTextAsUtf8) {
    EXPECT_EQ(fieldWith(L"4\u03A9 \U0001F600"), "\"4\xCE\xA9 \xF0\x9F\x98\x80\"");
}

TEST_F(Trace, EscapesASurrogateThatStandsAlone) {
    const wchar_t text[] = {L'a', static_cast<wchar_t>(0xD83D), L'b', 0};
    EXPECT_EQ(fieldWith(std::wstring_view(text)), R"("a\ud83db")");
}

TEST_F(Trace, ReplacesMalformedUtf8) {
    EXPECT_EQ(fieldWith("a\xFF"), "\"a\xEF\xBF\xBD\"");
}

TEST_F(Trace, WritesANullTextAsNull) {
    EXPECT_EQ(fieldWith(static_cast<const wchar_t*>(nullptr)), "null");
}

TEST_F(Trace, WritesNumbersAndTruthValues) {
    TraceLine("e").field("a", std::int64_t{-9000000000}).field("b", true).field("c", false);
    EXPECT_THAT(written(), HasSubstr(R"("a": -9000000000, "b": true, "c": false)"));
}

TEST_F(Trace, WritesAnIdByItsValueAlone) {
    EXPECT_EQ(fieldWith(KtDbObjectId(77)), R"({"id": 77})");
}

TEST_F(Trace, WritesAnIdWithWhatIsKnownOfItsObject) {
    setTraceIdDescriber([](KtDbObjectId) { return TracedObject{L"KtDbBlock", 0x2A, L"R \"1\""}; });
    EXPECT_EQ(fieldWith(KtDbObjectId(77)),
              R"({"id": 77, "class": "KtDbBlock", "handle": "2A", "name": "R \"1\""})");
}

TEST_F(Trace, LeavesOutWhatIsNotKnownOfAnObject) {
    setTraceIdDescriber([](KtDbObjectId) { return TracedObject{}; });
    EXPECT_EQ(fieldWith(KtDbObjectId(77)), R"({"id": 77})");
}

TEST_F(Trace, NamesAnAddressByItsLibrary) {
    ModuleLoader modules;
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    closeTrace();
    ASSERT_TRUE(openTrace(file));
    TraceLine("e").address("f", modules.exportOf("GoodModule.kmx", "goodMessageCount"));
    EXPECT_THAT(written(), HasSubstr(R"("f": "GoodModule.kmx+0x)"));
}

TEST_F(Trace, SaysThatAnAddressLiesInAnUnloadedModule) {
    ModuleLoader modules;
    ASSERT_TRUE(modules.load(testModule("GoodModule.kmx")));
    const void* address = modules.exportOf("GoodModule.kmx", "goodMessageCount");
    ASSERT_TRUE(modules.unload("GoodModule.kmx"));
    TraceLine("e").address("f", address);
    EXPECT_THAT(written(), HasSubstr(R"!("f": "GoodModule.kmx (unloaded)")!"));
}

} // namespace
} // namespace kthost
