#include "legacy/ArchiveWriter.h"

#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string count(std::uint64_t value) {
    std::string bytes;
    ArchiveWriter(bytes).writeCount(value);
    return bytes;
}

TEST(ArchiveWriter, WritesIntegersLeastSignificantByteFirst) {
    std::string bytes;
    ArchiveWriter writer(bytes);
    writer.writeUint64(0x0807060504030201U);
    EXPECT_EQ(bytes, "\x01\x02\x03\x04\x05\x06\x07\x08");
}

TEST(ArchiveWriter, WritesASignedIntegerBelowZero) {
    std::string bytes;
    ArchiveWriter(bytes).writeInt32(-2);
    EXPECT_EQ(bytes, "\xFE\xFF\xFF\xFF");
}

TEST(ArchiveWriter, AppendsToWhatIsThere) {
    std::string bytes = "a";
    ArchiveWriter(bytes).writeByte('b');
    EXPECT_EQ(bytes, "ab");
}

TEST(ArchiveCount, IsWrittenInTwoBytesBelow65535) {
    EXPECT_EQ(count(0xFFFE), TemplateBytes().u16(0xFFFE).bytes());
}

TEST(ArchiveCount, IsWrittenInSixBytesFrom65535) {
    EXPECT_EQ(count(0xFFFF), TemplateBytes().u16(0xFFFF).u32(0xFFFF).bytes());
}

TEST(ArchiveCount, IsWrittenInSixBytesBelow4294967295) {
    EXPECT_EQ(count(0xFFFFFFFE), TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFE).bytes());
}

TEST(ArchiveCount, IsWrittenInFourteenBytesFrom4294967295) {
    EXPECT_EQ(count(0xFFFFFFFF), TemplateBytes().u16(0xFFFF).u32(0xFFFFFFFF).u64(0xFFFFFFFF).bytes());
}

} // namespace
