#include "tests/legacy/LoadedTemplate.h"
#include "tests/legacy/TemplateBytes.h"

#include <gtest/gtest.h>

#include <string>

/// Characters outside the basic plane, which are two of the system's wide characters each.
namespace {

static_assert(sizeof(wchar_t) == 2);

TEST(TwoUnitCharacters, AreReadFromTemplatesAsBoth) {
    const LoadedTemplate loaded(TemplateBytes().header(1).newClass().body(u"\U0001F600", 1, 0));
    ASSERT_EQ(loaded.header.m_arrBlocks.size(), 1U);
    const std::wstring& name = loaded.block(0).m_strBlockName;
    ASSERT_EQ(name.size(), 2U);
    EXPECT_EQ(name[0], wchar_t{0xD83D});
    EXPECT_EQ(name[1], wchar_t{0xDE00});
}

} // namespace
