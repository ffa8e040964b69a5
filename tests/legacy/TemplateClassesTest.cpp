#include "legacy/CArchive.h"
#include "legacy/CEattMain.h"
#include "legacy/CEattUtil.h"
#include "tests/legacy/LoadedTemplate.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>

namespace {

/// Counts those that have been destroyed.
class CountedAttribute : public CEattAttributeInfo {
public:
    explicit CountedAttribute(int& destroyed) : destroyed_(&destroyed) {}

    ~CountedAttribute() override { ++*destroyed_; }

private:
    int* destroyed_;
};

std::string dumpOf(const CObject& object) {
    std::ostringstream out;
    object.Dump(out);
    return out.str();
}

/// The slot of a virtual operation: what a pointer to it holds first.
template <typename Operation>
std::ptrdiff_t slotOf(Operation operation) {
    std::ptrdiff_t slot = 0;
    std::memcpy(&slot, &operation, sizeof slot);
    return slot;
}

TEST(TemplateClasses, HaveTheirVirtualOperationsInOrder) {
    EXPECT_LT(slotOf(&CObject::GetRuntimeClass), slotOf(&CObject::Serialize));
    EXPECT_LT(slotOf(&CObject::Serialize), slotOf(&CObject::AssertValid));
    EXPECT_LT(slotOf(&CObject::AssertValid), slotOf(&CObject::Dump));
}

TEST(CEattMain, StartsWithVersionOneAndNothingElse) {
    const CEattMain made;
    EXPECT_EQ(made.m_nVersion, 1);
    EXPECT_TRUE(made.m_strTemplatePath.empty());
    EXPECT_TRUE(made.m_arrBlocks.empty());
    EXPECT_TRUE(made.m_arrSecondBlocks.empty());
    EXPECT_TRUE(made.m_arrThirdBlocks.empty());
    EXPECT_TRUE(made.m_arrPointers.empty());
}

TEST(CEattMain, IsNotCreatedByName) {
    EXPECT_EQ(CEattMain().GetRuntimeClass(), &CObject::kClass);
    EXPECT_EQ(CObject::kClass.m_pfnCreateObject, nullptr);
    EXPECT_EQ(CObject::kClass.m_nSchema, 0xFFFF);
}

TEST(CEattMain, SerializesItsVersionOnly) {
    CEattMain made;
    made.m_nVersion = 7;
    made.m_arrBlocks.push_back(std::make_unique<CEattBlockInfo>());
    std::string bytes;
    ArchiveWriter writer(bytes);
    CArchive archive(writer);
    made.Serialize(archive);
    EXPECT_EQ(bytes, TemplateBytes().u32(7).bytes());
}

TEST(CEattMain, DumpsTheNameOfItsClass) {
    EXPECT_EQ(dumpOf(CEattMain()), "a CObject\n");
}

TEST(CObject, HasNothingToStoreAndCannotBeBad) {
    CEattUtil plain;
    std::string bytes;
    ArchiveWriter writer(bytes);
    CArchive archive(writer);
    plain.Serialize(archive);
    plain.AssertValid();
    EXPECT_EQ(bytes, "");
}

TEST(CEattBlockInfo, StartsSelectedAndEmpty) {
    const CEattBlockInfo made;
    EXPECT_TRUE(made.m_bSelected);
    EXPECT_TRUE(made.m_strBlockName.empty());
    EXPECT_TRUE(made.m_mapAttributes.empty());
    EXPECT_TRUE(made.m_arrAttributes.empty());
    EXPECT_EQ(made.m_nUseCount, 0);
    EXPECT_EQ(made.m_nRefCount, 0);
}

TEST(CEattBlockInfo, StartsWithTheDefaultsOfWhatIsNeverStored) {
    const CEattBlockInfo made;
    EXPECT_EQ(made.m_strSecond + made.m_strThird + made.m_strFourth, L"");
    EXPECT_EQ(made.m_nUnused, 0);
    EXPECT_EQ(made.m_ptDefault, (KtGePoint3d{0.0, 0.0, 0.0}));
    EXPECT_EQ(made.m_scaleDefault, (KtGeScale3d{1.0, 1.0, 1.0}));
    EXPECT_EQ(made.m_arrUnused, (std::array<std::int64_t, 4>{}));
}

TEST(CEattBlockInfo, IsCreatedByItsName) {
    const CRuntimeClass& known = *CEattBlockInfo().GetRuntimeClass();
    EXPECT_STREQ(known.m_lpszClassName, "CEattBlockInfo");
    EXPECT_EQ(known.m_nSchema, 1);
    const auto made = known.m_pfnCreateObject();
    EXPECT_EQ(made->GetRuntimeClass(), &known);
    EXPECT_TRUE(dynamic_cast<CEattBlockInfo&>(*made).m_bSelected);
}

TEST(CEattBlockInfo, DestroysItsAttributes) {
    int destroyed = 0;
    auto made = std::make_unique<CEattBlockInfo>();
    made->m_arrAttributes.push_back(std::make_unique<CountedAttribute>(destroyed));
    made.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(CEattBlockInfo, StoresTagsInOrderWithoutRegardToCase) {
    CEattMain source;
    source.m_arrBlocks.push_back(std::make_unique<CEattBlockInfo>());
    for (const wchar_t* tag : {L"Value", L"dnp", L"Reference", L"in_bom"}) {
        source.m_arrBlocks.back()->m_mapAttributes.add(tag, std::make_unique<AttributeEntry>());
    }
    EXPECT_EQ(storedBytes(source), TemplateBytes()
                                       .header(1)
                                       .newClass()
                                       .body(u"", 1, 4)
                                       .attribute(u"dnp", 0)
                                       .attribute(u"in_bom", 0)
                                       .attribute(u"Reference", 0)
                                       .attribute(u"Value", 0)
                                       .bytes());
}

TEST(AttributeEntry, StartsEmpty) {
    const AttributeEntry made;
    EXPECT_FALSE(made.m_bSelected);
    EXPECT_EQ(made.m_strFirst + made.m_strSecond, L"");
}

} // namespace
