#include "legacy/ArchiveReader.h"
#include "legacy/ArchiveWriter.h"
#include "legacy/TemplateFailure.h"
#include "tests/legacy/MemorySource.h"
#include "tests/legacy/TemplateBytes.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using testing::ThrowsMessage;

std::wstring stringIn(const TemplateBytes& bytes) {
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    std::wstring text = reader.readString();
    EXPECT_EQ(reader.remaining(), 0U);
    return text;
}

std::string written(std::wstring_view text) {
    std::string bytes;
    ArchiveWriter(bytes).writeString(text);
    return bytes;
}

void expectEndOfFileAt(std::uint64_t offset, const TemplateBytes& bytes) {
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    try {
        reader.readString();
        ADD_FAILURE() << "nothing failed";
    } catch (const ArchiveFailure& failure) {
        EXPECT_EQ(failure.cause(), ArchiveFailure::Cause::endOfFile);
        EXPECT_EQ(failure.offset(), offset);
    }
}

TemplateBytes utf16Marker() {
    return TemplateBytes().u8(0xFF).u16(0xFFFE);
}

TEST(ArchiveString, OfEightBitCharactersHasALengthOfOneByte) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(2).raw("ab")), L"ab");
}

TEST(ArchiveString, OfEightBitCharactersHasALengthOfTwoBytes) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(0xFF).u16(2).raw("ab")), L"ab");
}

TEST(ArchiveString, OfEightBitCharactersHasALengthOfFourBytes) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(0xFF).u16(0xFFFF).u32(2).raw("ab")), L"ab");
}

TEST(ArchiveString, OfEightBitCharactersHasALengthOfEightBytes) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(2).raw("ab")), L"ab");
}

TEST(ArchiveString, OfEightBitCharactersEndsWhereItSaysHoweverLongItIs) {
    const std::string text(10000, 'a');
    MemorySource source(TemplateBytes().u8(0xFF).u16(text.size()).raw(text).raw(text).bytes());
    ArchiveReader reader(source);
    EXPECT_EQ(reader.readString(), std::wstring(text.begin(), text.end()));
    EXPECT_EQ(reader.remaining(), text.size());
}

TEST(ArchiveString, OfUtf16HasALengthOfOneByte) {
    EXPECT_EQ(stringIn(utf16Marker().u8(2).characters(u"ab")), L"ab");
}

TEST(ArchiveString, OfUtf16HasALengthOfTwoBytes) {
    EXPECT_EQ(stringIn(utf16Marker().u8(0xFF).u16(2).characters(u"ab")), L"ab");
}

TEST(ArchiveString, OfUtf16HasALengthOfFourBytes) {
    EXPECT_EQ(stringIn(utf16Marker().u8(0xFF).u16(0xFFFF).u32(2).characters(u"ab")), L"ab");
}

TEST(ArchiveString, OfUtf16HasALengthOfEightBytes) {
    EXPECT_EQ(stringIn(utf16Marker().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(2).characters(u"ab")), L"ab");
}

TEST(ArchiveString, TakesTheMarkerFor65534CharactersWhereItComesAgain) {
    EXPECT_EQ(stringIn(utf16Marker().u8(0xFF).u16(0xFFFE).characters(std::u16string(0xFFFE, u'x'))),
              std::wstring(0xFFFE, L'x'));
}

TEST(ArchiveString, MayBeEmptyInEightBitForm) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(0)), L"");
}

TEST(ArchiveString, MayBeEmptyInUtf16Form) {
    EXPECT_EQ(stringIn(utf16Marker().u8(0)), L"");
}

TEST(ArchiveString, KeepsZerosOfUtf16) {
    EXPECT_EQ(stringIn(utf16Marker().u8(3).characters({u"a\0b", 3})), std::wstring(L"a\0b", 3));
}

TEST(ArchiveString, KeepsZerosOfEightBitCharacters) {
    EXPECT_EQ(stringIn(TemplateBytes().u8(3).raw({"a\0b", 3})), std::wstring(L"a\0b", 3));
}

TEST(ArchiveString, JoinsAPairThatLiesAcrossTheEndOfTheBuffer) {
    std::u16string units(2045, u'x');
    units += u"\U0001F600";
    const std::wstring text = stringIn(utf16Marker().u8(0xFF).u16(units.size()).characters(units).raw(""));
    EXPECT_EQ(text.substr(2045), L"\U0001F600");
}

TEST(ArchiveString, FailsWithoutALength) {
    expectEndOfFileAt(0, TemplateBytes());
}

TEST(ArchiveString, FailsWhereItsLengthIsCutOff) {
    expectEndOfFileAt(1, TemplateBytes().u8(0xFF).u8(0));
}

TEST(ArchiveString, FailsWhereTheLengthAfterTheMarkerIsCutOff) {
    expectEndOfFileAt(3, utf16Marker());
}

TEST(ArchiveString, FailsWhereItsEightBitCharactersAreCutOff) {
    expectEndOfFileAt(1, TemplateBytes().u8(3).raw("ab"));
}

TEST(ArchiveString, FailsWhereItsUtf16IsCutOff) {
    expectEndOfFileAt(4, utf16Marker().u8(2).u16('a').u8('b'));
}

TEST(ArchiveString, FailsBeforeTheCharactersOfALongTextThatIsCutOff) {
    expectEndOfFileAt(6, utf16Marker().u8(0xFF).u16(5000).raw(std::string(9999, 'x')));
}

TEST(ArchiveString, FailsForALengthOfTwoToThe63WithoutTakingMemory) {
    expectEndOfFileAt(18, utf16Marker().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63).u8(0));
}

/// Says that it has more bytes than any memory.
class EndlessSource : public MemorySource {
public:
    using MemorySource::MemorySource;

    [[nodiscard]] std::uint64_t size() const override { return ~std::uint64_t{0}; }
};

TEST(ArchiveString, RunsOutOfMemoryForALengthThatTheFileHasAndNoTextCanHave) {
    EndlessSource source(TemplateBytes().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(1ULL << 63).bytes());
    ArchiveReader reader(source);
    EXPECT_THROW(reader.readString(), std::bad_alloc);
}

TEST(ArchiveString, FailsForTheGreatestLengthOfEightBitCharacters) {
    expectEndOfFileAt(15, TemplateBytes().u8(0xFF).u16(0xFFFF).u32(0xFFFFFFFF).u64(~0ULL).u8(0));
}

TEST(ArchiveString, IsWrittenAsUtf16WithItsMarker) {
    EXPECT_EQ(written(L"T"), std::string("\xFF\xFE\xFF\x01T\0", 6));
}

TEST(ArchiveString, IsWrittenWithALengthInUtf16CodeUnits) {
    EXPECT_EQ(written(L"\U0001F600"), std::string("\xFF\xFE\xFF\x02\x3D\xD8\x00\xDE", 8));
}

struct Form {
    std::size_t length;
    std::string prefix;
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.length << " characters";
}

class WrittenLength : public testing::TestWithParam<Form> {};

TEST_P(WrittenLength, TakesTheShortestForm) {
    const Form& form = GetParam();
    const std::string bytes = written(std::wstring(form.length, L'x'));
    EXPECT_EQ(bytes.substr(0, bytes.size() - 2 * form.length), "\xFF\xFE\xFF" + form.prefix);
}

TEST_P(WrittenLength, IsReadBack) {
    const std::wstring text(GetParam().length, L'x');
    EXPECT_EQ(stringIn(TemplateBytes().raw(written(text))), text);
}

INSTANTIATE_TEST_SUITE_P(
    ArchiveString, WrittenLength,
    testing::Values(Form{0, TemplateBytes().u8(0).bytes()}, Form{1, TemplateBytes().u8(1).bytes()},
                    Form{254, TemplateBytes().u8(254).bytes()},
                    Form{255, TemplateBytes().u8(0xFF).u16(255).bytes()},
                    Form{256, TemplateBytes().u8(0xFF).u16(256).bytes()},
                    Form{65533, TemplateBytes().u8(0xFF).u16(65533).bytes()},
                    Form{65534, TemplateBytes().u8(0xFF).u16(0xFFFF).u32(65534).bytes()},
                    Form{65535, TemplateBytes().u8(0xFF).u16(0xFFFF).u32(65535).bytes()},
                    Form{65536, TemplateBytes().u8(0xFF).u16(0xFFFF).u32(65536).bytes()}));

TEST(ArchiveString, ReadsBackEveryUtf16CodeUnit) {
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const std::wstring text(1, static_cast<wchar_t>(unit));
        ASSERT_EQ(stringIn(TemplateBytes().raw(written(text))), text) << unit;
    }
}

TEST(ArchiveString, ThatIsCutOffSaysHowLongItShouldBe) {
    const TemplateBytes bytes = TemplateBytes().u8(5).raw("abc");
    MemorySource source(bytes.bytes());
    ArchiveReader reader(source);
    EXPECT_THAT(
        [&] { reader.readString(); },
        ThrowsMessage<ArchiveFailure>("end of file: a text of 5 characters is announced and 3 bytes remain"));
}

} // namespace
