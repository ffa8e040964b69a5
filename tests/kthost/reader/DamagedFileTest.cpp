#include "kthost/reader/SchematicReader.h"

#include "tests/kthost/reader/ReaderTestSupport.h"

#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <iterator>
#include <random>

namespace kthost {
namespace {

std::string readSample() {
    std::ifstream stream(test::samplesFolder() / "channel.kicad_sch", std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())) != 0) {
        text.pop_back();
    }
    return text;
}

/// True when the text is read or refused with a place inside it; whatever else is thrown passes.
bool isReadOrRefused(const std::string& text) {
    try {
        test::parse(text);
    } catch (const ReadError& error) {
        return error.position().line > 0;
    }
    return true;
}

TEST(DamagedFile, IsRefusedWhereverItIsCutOff) {
    const std::string sample = readSample();
    ASSERT_GT(sample.size(), 10000U);
    for (std::size_t length = 0; length < sample.size(); length += 101) {
        EXPECT_NE(test::parseError(sample.substr(0, length)), "no error") << "cut off after " << length;
    }
    EXPECT_EQ(test::parseError(sample), "no error");
}

TEST(DamagedFile, IsReadOrRefusedWhateverBytesAreChanged) {
    const std::string sample = readSample();
    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    const std::string bytes = "()\"\\|\n -0a\x80\xFF";
    for (int round = 0; round < 300; ++round) {
        std::string damaged = sample;
        for (int change = 0; change < 3; ++change) {
            damaged[random() % damaged.size()] = bytes[random() % bytes.size()];
        }
        ASSERT_TRUE(isReadOrRefused(damaged)) << "seed " << seed << ", round " << round;
    }
}

TEST(DamagedFile, IsReadOrRefusedWhateverPieceIsMissing) {
    const std::string sample = readSample();
    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        std::string damaged = sample;
        damaged.erase(random() % damaged.size(), random() % 200);
        ASSERT_TRUE(isReadOrRefused(damaged)) << "seed " << seed << ", round " << round;
    }
}

} // namespace
} // namespace kthost
