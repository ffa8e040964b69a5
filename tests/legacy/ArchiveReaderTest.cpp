#include "legacy/ArchiveReader.h"

#include "legacy/TemplateFailure.h"
#include "tests/legacy/MemorySource.h"
#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Cause = ArchiveFailure::Cause;

/// A reader and what it reads.
struct Reading {
    explicit Reading(const TemplateBytes& bytes, std::size_t piece = 4096)
        : source(bytes.bytes(), piece),
          reader(source) {}

    MemorySource source;
    ArchiveReader reader;
};

/// Where reading an item ends, if it fails at the end of the file.
template <typename Read>
std::uint64_t offsetOfEnd(const TemplateBytes& bytes, Read read) {
    Reading reading(bytes);
    try {
        read(reading.reader);
    } catch (const ArchiveFailure& failure) {
        EXPECT_EQ(failure.cause(), Cause::endOfFile);
        return failure.offset();
    }
    ADD_FAILURE() << "nothing failed";
    return 0;
}

std::uint64_t countIn(const TemplateBytes& bytes) {
    Reading reading(bytes);
    const std::uint64_t count = reading.reader.readCount();
    EXPECT_EQ(reading.reader.remaining(), 0U);
    return count;
}

TEST(ArchiveReader, ReadsIntegersLeastSignificantByteFirst) {
    Reading reading(TemplateBytes().raw("\x01\x02\x03\x04\x05\x06\x07\x08"));
    EXPECT_EQ(reading.reader.readUint64(), 0x0807060504030201U);
}

TEST(ArchiveReader, ReadsASignedIntegerBelowZero) {
    Reading reading(TemplateBytes().raw("\xFE\xFF\xFF\xFF"));
    EXPECT_EQ(reading.reader.readInt32(), -2);
}

TEST(ArchiveReader, TellsItsPosition) {
    Reading reading(TemplateBytes().u32(0).u16(0));
    reading.reader.readUint32();
    EXPECT_EQ(reading.reader.position(), 4U);
    EXPECT_EQ(reading.reader.remaining(), 2U);
}

TEST(ArchiveReader, ReadsAcrossTheEndOfItsBuffer) {
    Reading reading(TemplateBytes().raw(std::string(4094, 'x')).u32(0x12345678).u8(9));
    reading.reader.readBytes(4094);
    EXPECT_EQ(reading.reader.readUint32(), 0x12345678U);
    EXPECT_EQ(reading.reader.readByte(), 9U);
}

TEST(ArchiveReader, ReadsFromASourceThatGivesOneByteAtATime) {
    Reading reading(TemplateBytes().u32(0x12345678).text(u"ab"), 1);
    EXPECT_EQ(reading.reader.readUint32(), 0x12345678U);
    EXPECT_EQ(reading.reader.readString(), L"ab");
}

TEST(ArchiveReader, FailsWhereAnIntegerThatIsCutOffBegins) {
    EXPECT_EQ(offsetOfEnd(TemplateBytes().u16(0).u8(7),
                          [](ArchiveReader& reader) {
                              reader.readUint16();
                              reader.readUint32();
                          }),
              2U);
}

TEST(ArchiveReader, FailsAtTheEndOfASourceThatGivesLessThanItHasTold) {
    class Shrunk : public ByteSource {
    public:
        std::size_t read(std::span<unsigned char> /*to*/) override { return 0; }

        [[nodiscard]] std::uint64_t size() const override { return 100; }
    };

    Shrunk source;
    ArchiveReader reader(source);
    EXPECT_THROW(reader.readUint32(), ArchiveFailure);
}

TEST(ArchiveReader, StopsAtTheSizeThatTheSourceHasToldThoughItGivesMore) {
    class Grown : public ByteSource {
    public:
        std::size_t read(std::span<unsigned char> to) override {
            std::fill(to.begin(), to.end(), static_cast<unsigned char>(1));
            return to.size();
        }

        [[nodiscard]] std::uint64_t size() const override { return 5; }
    };

    Grown source;
    ArchiveReader reader(source);
    reader.readUint32();
    EXPECT_EQ(reader.remaining(), 1U);
    EXPECT_THROW(reader.readUint32(), ArchiveFailure);
}

TEST(ArchiveReader, AsksItsSourceForNothingWhereTooLittleIsLeft) {
    class Broken : public ByteSource {
    public:
        std::size_t read(std::span<unsigned char> /*to*/) override { throw FileFailure("reading fails"); }

        [[nodiscard]] std::uint64_t size() const override { return 3; }
    };

    Broken source;
    ArchiveReader reader(source);
    EXPECT_THROW(reader.readUint32(), ArchiveFailure);
}

TEST(ArchiveReader, PassesOnTheFailureOfItsSource) {
    class Broken : public ByteSource {
    public:
        std::size_t read(std::span<unsigned char> /*to*/) override { throw FileFailure("reading fails"); }

        [[nodiscard]] std::uint64_t size() const override { return 100; }
    };

    Broken source;
    ArchiveReader reader(source);
    EXPECT_THROW(reader.readByte(), FileFailure);
}

/// A reader whose buffer has been filled, with a byte that is not of what follows.
struct Peeking : Reading {
    explicit Peeking(const TemplateBytes& bytes, std::size_t buffered = 4096)
        : Reading(TemplateBytes().u8(0).raw(bytes.bytes()), 1 + buffered) {
        reader.readByte();
    }

    bool peek() { return reader.peekString(text, next); }

    std::string_view text;
    std::uint8_t next = 0;
};

TEST(ArchivePeek, IsAtATextOfTheUsualFormAndTheByteBehindIt) {
    Peeking peeking(TemplateBytes().text(u"abc").u8(7).u8(9));
    ASSERT_TRUE(peeking.peek());
    EXPECT_EQ(peeking.text, std::string_view("a\0b\0c\0", 6));
    EXPECT_EQ(peeking.next, 7U);
    EXPECT_EQ(peeking.reader.readByte(), 9U);
}

TEST(ArchivePeek, IsNotAtATextOfAnotherForm) {
    const std::vector<TemplateBytes> others{
        TemplateBytes().u8(3).u8(0xFE).u8(0xFF).u8(0), // three characters of 8 bits
        TemplateBytes().u8(0xFF).u16(0xFF01).u8(0),    // many of them
        TemplateBytes().u8(0xFF).u16(0x01FE).u8(0),    //
        TemplateBytes().u8(0xFF).u16(0xFFFE).u8(0xFF), // many of 16 bits
    };
    for (TemplateBytes other : others) {
        Peeking peeking(other.raw(std::string(1000, '\0')));
        EXPECT_FALSE(peeking.peek());
        EXPECT_EQ(peeking.reader.position(), 1U);
    }
}

TEST(ArchivePeek, IsNotAtATextThatIsNotInTheBufferWithTheByteBehindIt) {
    const TemplateBytes bytes = TemplateBytes().text(u"a").u8(7);
    for (std::size_t buffered = 0; buffered < bytes.bytes().size(); ++buffered) {
        Peeking peeking(bytes, buffered);
        EXPECT_FALSE(peeking.peek()) << buffered;
        EXPECT_EQ(peeking.reader.readString(), L"a");
    }
}

TEST(ArchiveCount, IsReadFromTwoBytes) {
    EXPECT_EQ(countIn(TemplateBytes().u16(0xFFFE)), 0xFFFEU);
}

TEST(ArchiveCount, IsReadFromSixBytes) {
    EXPECT_EQ(countIn(TemplateBytes().u16(0xFFFF).u32(0xFFFF)), 0xFFFFU);
}

TEST(ArchiveCount, IsReadFromSixBytesThoughTwoWouldDo) {
    EXPECT_EQ(countIn(TemplateBytes().u16(0xFFFF).u32(3)), 3U);
}

TEST(ArchiveCount, IsReadFromFourteenBytes) {
    EXPECT_EQ(countIn(TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFF).u64(0xFFFFFFFF)), 0xFFFFFFFFU);
}

TEST(ArchiveCount, IsReadFromFourteenBytesThoughTwoWouldDo) {
    EXPECT_EQ(countIn(TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFF).u64(2)), 2U);
}

TEST(ArchiveCount, FailsWhereItsFourByteFormIsCutOff) {
    EXPECT_EQ(
        offsetOfEnd(TemplateBytes().u16(0xFFFF).u16(1), [](ArchiveReader& reader) { reader.readCount(); }),
        2U);
}

TEST(ArchiveCount, FailsWhereItsEightByteFormIsCutOff) {
    EXPECT_EQ(offsetOfEnd(TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFF).u32(1),
                          [](ArchiveReader& reader) { reader.readCount(); }),
              6U);
}

} // namespace
