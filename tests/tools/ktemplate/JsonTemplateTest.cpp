#include "tools/ktemplate/JsonTemplate.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::unique_ptr<CEattMain> made(const std::string& json) {
    std::istringstream in(json);
    return ktemplate::templateFromJson(in);
}

std::string refusalOf(const std::string& json) {
    try {
        made(json);
    } catch (const ktemplate::JsonRefusal& refusal) {
        return refusal.what();
    }
    return "nothing was refused";
}

std::string withBlocks(const std::string& blocks) {
    return R"({"version": 1, "blocks": [)" + blocks + "]}";
}

std::string withAttributes(const std::string& attributes) {
    return withBlocks(R"({"name": "A", "selected": true, "attributes": []},
                         {"name": "B", "selected": true, "attributes": [)" +
                      attributes + "]}");
}

const std::string kAttribute = R"({"tag": "T", "selected": true})";

TEST(JsonTemplate, TakesTheVersion) {
    EXPECT_EQ(made(R"({"version": -7, "blocks": []})")->m_nVersion, -7);
}

TEST(JsonTemplate, MayHaveNoBlocks) {
    EXPECT_TRUE(made(withBlocks(""))->m_arrBlocks.empty());
}

TEST(JsonTemplate, TakesBlocksInOrder) {
    const auto contents = made(withAttributes(""));
    EXPECT_EQ(contents->m_arrBlocks.at(0)->m_strBlockName, L"A");
    EXPECT_EQ(contents->m_arrBlocks.at(1)->m_strBlockName, L"B");
}

TEST(JsonTemplate, TakesTheFlagOfABlock) {
    const auto contents = made(withBlocks(R"({"name": "", "selected": false, "attributes": []})"));
    EXPECT_FALSE(contents->m_arrBlocks.at(0)->m_bSelected);
}

TEST(JsonTemplate, TakesAttributesWithTheirFlags) {
    const auto contents = made(withAttributes(kAttribute + R"(, {"tag": "U", "selected": false})"));
    const AttributeMap& attributes = contents->m_arrBlocks.at(1)->m_mapAttributes;
    EXPECT_TRUE(attributes.find(L"T")->m_bSelected);
    EXPECT_FALSE(attributes.find(L"U")->m_bSelected);
    EXPECT_TRUE(contents->m_arrBlocks.at(0)->m_mapAttributes.empty());
}

TEST(JsonTemplate, TakesMembersInAnyOrder) {
    const auto contents = made(
        R"({"blocks": [{"attributes": [{"selected": true, "tag": "T"}], "selected": true, "name": "B"}], "version": 2})");
    EXPECT_EQ(contents->m_nVersion, 2);
    EXPECT_EQ(contents->m_arrBlocks.at(0)->m_strBlockName, L"B");
    EXPECT_TRUE(contents->m_arrBlocks.at(0)->m_mapAttributes.find(L"T")->m_bSelected);
}

TEST(JsonTemplate, TakesTextOfAllPlanes) {
    const auto contents =
        made(withBlocks(R"({"name": "\u00e9\ud83d\ude00", "selected": true, "attributes": []})"));
    EXPECT_EQ(contents->m_arrBlocks.at(0)->m_strBlockName, L"\u00E9\U0001F600");
}

TEST(JsonTemplate, AllowsTheSameTagInTwoBlocks) {
    const std::string block = R"({"name": "A", "selected": true, "attributes": [)" + kAttribute + "]}";
    EXPECT_EQ(made(withBlocks(block + "," + block))->m_arrBlocks.size(), 2U);
}

TEST(JsonTemplate, RefusesATagThatIsThereTwice) {
    EXPECT_EQ(refusalOf(withAttributes(kAttribute + "," + kAttribute)),
              "/blocks/1/attributes/1/tag: \"T\" is the tag of an earlier attribute of this block");
}

TEST(JsonTemplate, RefusesADocumentThatIsNoObject) {
    EXPECT_EQ(refusalOf("[]"), "the document: is an array and has to be an object");
}

TEST(JsonTemplate, RefusesNoDocumentAtAll) {
    EXPECT_EQ(refusalOf("").substr(0, 7), "byte 1:");
}

TEST(JsonTemplate, RefusesAVersionThatIsText) {
    EXPECT_EQ(refusalOf(R"({"version": "1"})"), "/version: is a string and has to be an integer");
}

TEST(JsonTemplate, RefusesAVersionWithAFraction) {
    EXPECT_EQ(refusalOf(R"({"version": 1.5})"),
              "/version: is a number with a fraction and has to be an integer");
}

TEST(JsonTemplate, RefusesAVersionAbove32Bits) {
    EXPECT_EQ(refusalOf(R"({"version": 2147483648})"), "/version: is 2147483648 and has to fit into 32 bits");
}

TEST(JsonTemplate, RefusesAVersionBelow32Bits) {
    EXPECT_EQ(refusalOf(R"({"version": -2147483649})"),
              "/version: is -2147483649 and has to fit into 32 bits");
}

TEST(JsonTemplate, RefusesAVersionAbove63Bits) {
    EXPECT_EQ(refusalOf(R"({"version": 18446744073709551615})"),
              "/version: is 18446744073709551615 and has to fit into 32 bits");
}

TEST(JsonTemplate, RefusesBlocksThatAreNoArray) {
    EXPECT_EQ(refusalOf(R"({"blocks": {}})"), "/blocks: is an object and has to be an array");
}

TEST(JsonTemplate, RefusesABlockThatIsNoObject) {
    EXPECT_EQ(refusalOf(withBlocks("null")), "/blocks/0: is null and has to be an object");
}

TEST(JsonTemplate, RefusesAnAttributeThatIsNoObject) {
    EXPECT_EQ(refusalOf(withAttributes(kAttribute + ", []")),
              "/blocks/1/attributes/1: is an array and has to be an object");
}

TEST(JsonTemplate, RefusesANameThatIsNoText) {
    EXPECT_EQ(refusalOf(withBlocks(R"({"name": 1})")),
              "/blocks/0/name: is an integer and has to be a string");
}

TEST(JsonTemplate, RefusesAFlagThatIsANumber) {
    EXPECT_EQ(refusalOf(withAttributes(R"({"selected": 1})")),
              "/blocks/1/attributes/0/selected: is an integer and has to be true or false");
}

TEST(JsonTemplate, RefusesATemplateWithoutAVersion) {
    EXPECT_EQ(refusalOf(R"({"blocks": []})"), "the document: has no \"version\"");
}

TEST(JsonTemplate, RefusesATemplateWithoutBlocks) {
    EXPECT_EQ(refusalOf(R"({"version": 1})"), "the document: has no \"blocks\"");
}

TEST(JsonTemplate, RefusesABlockWithoutAttributes) {
    EXPECT_EQ(refusalOf(withBlocks(R"({"name": "", "selected": true})")), "/blocks/0: has no \"attributes\"");
}

TEST(JsonTemplate, RefusesAnAttributeWithoutATag) {
    EXPECT_EQ(refusalOf(withAttributes(kAttribute + R"(, {"selected": true})")),
              "/blocks/1/attributes/1: has no \"tag\"");
}

TEST(JsonTemplate, RefusesAMemberThatItDoesNotKnow) {
    EXPECT_EQ(refusalOf(withBlocks(R"({"attribtues": []})")),
              "/blocks/0/attribtues: there is no such member in a template");
}

TEST(JsonTemplate, EscapesTheNameOfAMemberInAPointer) {
    EXPECT_EQ(refusalOf(R"({"a/b~c": 1})"), "/a~1b~0c: there is no such member in a template");
}

TEST(JsonTemplate, RefusesAMemberThatIsThereTwice) {
    EXPECT_EQ(refusalOf(withBlocks(R"({"name": "a", "name": "b"})")), "/blocks/0/name: is there twice");
}

TEST(JsonTemplate, RefusesTextAfterTheDocument) {
    EXPECT_NE(refusalOf(withBlocks("") + "x").find("byte"), std::string::npos);
}

TEST(JsonTemplate, RefusesALoneSurrogate) {
    EXPECT_NE(refusalOf(withBlocks(R"({"name": "\ud800"})")).find("surrogate"), std::string::npos);
}

TEST(JsonTemplate, RefusesTextThatIsNotUtf8) {
    EXPECT_NE(refusalOf(withBlocks("{\"name\": \"\xFF\"}")).find("UTF-8"), std::string::npos);
}

TEST(JsonTemplate, RefusesAMillionOpenBracketsAtTheFirstThatDoesNotFit) {
    EXPECT_EQ(refusalOf(std::string(1'000'000, '[')), "the document: is an array and has to be an object");
}

} // namespace
