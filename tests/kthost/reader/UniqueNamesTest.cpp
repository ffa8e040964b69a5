#include "kthost/reader/UniqueNames.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

TEST(UniqueNames, GivesTheNameThatIsAskedFor) {
    EXPECT_EQ(UniqueNames(UniqueNames::Case::matters).take(L"a"), L"a");
}

TEST(UniqueNames, NumbersThoseThatComeLater) {
    UniqueNames names(UniqueNames::Case::matters);
    names.take(L"a");
    EXPECT_EQ(names.take(L"a"), L"a (2)");
    EXPECT_EQ(names.take(L"a"), L"a (3)");
}

TEST(UniqueNames, PassesOverANumberThatSomebodyHas) {
    UniqueNames names(UniqueNames::Case::matters);
    names.take(L"a (2)");
    names.take(L"a");
    EXPECT_EQ(names.take(L"a"), L"a (3)");
}

TEST(UniqueNames, TellUpperFromLowerCaseWhereThatMatters) {
    UniqueNames names(UniqueNames::Case::matters);
    names.take(L"a");
    EXPECT_EQ(names.take(L"A"), L"A");
}

TEST(UniqueNames, DoNotTellUpperFromLowerCaseWhereThatIsIgnored) {
    UniqueNames names(UniqueNames::Case::ignored);
    names.take(L"Amp");
    EXPECT_EQ(names.take(L"aMP"), L"aMP (2)");
    EXPECT_EQ(names.take(L"AMP"), L"AMP (3)");
}

TEST(RecordNameText, KeepsAnOrdinaryName) {
    EXPECT_EQ(recordNameText(L"Device:R*"), L"Device:R*");
}

TEST(RecordNameText, WritesABarAsAWord) {
    EXPECT_EQ(recordNameText(L"a|b|"), L"a{bar}b{bar}");
}

TEST(RecordNameText, WritesALeadingStarAsAWord) {
    EXPECT_EQ(recordNameText(L"*U1"), L"{star}U1");
}

TEST(RecordNameText, IsNeverEmpty) {
    EXPECT_EQ(recordNameText(L""), L"{empty}");
}

} // namespace
} // namespace kthost
