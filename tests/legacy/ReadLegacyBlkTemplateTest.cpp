#include "tests/legacy/CountedMemory.h"
#include "tests/legacy/TempFile.h"
#include "tests/legacy/TemplateBytes.h"

#include <ktdx/KtDxNotify.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The two lists as a client gets them, which held something before.
struct Lists {
    Lists() {
        blockNames.addTail(L"old", 3);
        attributeTags.addTail(L"old", 3);
    }

    explicit Lists(const std::string& bytes) : Lists() {
        const TempFile file(bytes);
        read(file.wide().c_str());
    }

    explicit Lists(const TemplateBytes& bytes) : Lists(bytes.bytes()) {}

    void read(const wchar_t* path) { ktdxReadLegacyBlkTemplate(path, &blockNames, &attributeTags); }

    [[nodiscard]] bool empty() const {
        return blockNames.strings().empty() && attributeTags.strings().empty();
    }

    KtDxStringVector blockNames;
    KtDxStringVector attributeTags;
};

TemplateBytes doorAndWindow() {
    return TemplateBytes()
        .header(2)
        .newClass()
        .body(u"Door", 1, 2)
        .attribute(u"Width", 1)
        .attribute(u"Height", 0)
        .u16(0x8001)
        .body(u"Window", 1, 2)
        .attribute(u"Height", 1)
        .attribute(u"Glass", 1);
}

TEST(ReadLegacyBlkTemplate, ListsBlocksInFileOrder) {
    EXPECT_THAT(Lists(doorAndWindow()).blockNames.strings(), ElementsAre(L"Door", L"Window"));
}

TEST(ReadLegacyBlkTemplate, ListsTagsInFileOrder) {
    const Lists lists(TemplateBytes()
                          .header(1)
                          .newClass()
                          .body(u"B", 1, 3)
                          .attribute(u"Z", 1)
                          .attribute(u"a", 1)
                          .attribute(u"M", 1));
    EXPECT_THAT(lists.attributeTags.strings(), ElementsAre(L"Z", L"a", L"M"));
}

TEST(ReadLegacyBlkTemplate, ListsATagOnceThatIsSelectedInOneBlockOnly) {
    EXPECT_THAT(Lists(doorAndWindow()).attributeTags.strings(), ElementsAre(L"Width", L"Height", L"Glass"));
}

TEST(ReadLegacyBlkTemplate, ListsNoTagTwice) {
    const Lists lists(TemplateBytes()
                          .header(2)
                          .newClass()
                          .body(u"A", 1, 1)
                          .attribute(u"T", 1)
                          .u16(0x8001)
                          .body(u"B", 1, 1)
                          .attribute(u"T", 1));
    EXPECT_THAT(lists.attributeTags.strings(), ElementsAre(L"T"));
}

TEST(ReadLegacyBlkTemplate, ListsTagsThatDifferInCase) {
    const Lists lists(
        TemplateBytes().header(1).newClass().body(u"B", 1, 2).attribute(u"T", 1).attribute(u"t", 1));
    EXPECT_THAT(lists.attributeTags.strings(), ElementsAre(L"T", L"t"));
}

TEST(ReadLegacyBlkTemplate, ListsABlockNameOnce) {
    const Lists lists(
        TemplateBytes().header(2).newClass().body(u"Door", 1, 0).u16(0x8001).body(u"Door", 1, 0));
    EXPECT_THAT(lists.blockNames.strings(), ElementsAre(L"Door"));
}

TEST(ReadLegacyBlkTemplate, ListsBlockNamesThatDifferInCase) {
    const Lists lists(
        TemplateBytes().header(2).newClass().body(u"Door", 1, 0).u16(0x8001).body(u"DOOR", 1, 0));
    EXPECT_THAT(lists.blockNames.strings(), ElementsAre(L"Door", L"DOOR"));
}

TEST(ReadLegacyBlkTemplate, ListsAnEmptyNameAndAnEmptyTag) {
    const Lists lists(TemplateBytes().header(1).newClass().body(u"", 1, 1).attribute(u"", 1));
    EXPECT_THAT(lists.blockNames.strings(), ElementsAre(L""));
    EXPECT_THAT(lists.attributeTags.strings(), ElementsAre(L""));
}

TEST(ReadLegacyBlkTemplate, ListsTheNameOfABlockWithoutSelectedAttributes) {
    const Lists lists(TemplateBytes().header(1).newClass().body(u"B", 1, 1).attribute(u"T", 0));
    EXPECT_THAT(lists.blockNames.strings(), ElementsAre(L"B"));
    EXPECT_THAT(lists.attributeTags.strings(), IsEmpty());
}

TEST(ReadLegacyBlkTemplate, ListsNothingOfABlockThatIsNotSelected) {
    EXPECT_TRUE(Lists(TemplateBytes().header(1).newClass().body(u"B", 0, 1).attribute(u"T", 1)).empty());
}

TEST(ReadLegacyBlkTemplate, ReadsAnyVersionAlike) {
    for (const std::uint64_t version : {0U, 1U, 7U}) {
        const Lists lists(TemplateBytes().u32(version).u16(1).newClass().body(u"B", 1, 0));
        EXPECT_THAT(lists.blockNames.strings(), ElementsAre(L"B"));
    }
}

TEST(ReadLegacyBlkTemplate, KeepsZerosWithinNames) {
    const Lists lists(TemplateBytes().header(1).newClass().body({u"a\0b", 3}, 1, 0));
    EXPECT_THAT(lists.blockNames.strings(), ElementsAre(std::wstring(L"a\0b", 3)));
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForAnEmptyPath) {
    Lists lists;
    lists.read(L"");
    EXPECT_TRUE(lists.empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForANullPath) {
    Lists lists;
    lists.read(nullptr);
    EXPECT_TRUE(lists.empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForAMissingFile) {
    Lists lists;
    lists.read(L"/no/such/file.blk");
    EXPECT_TRUE(lists.empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForAFileThatIsCutOff) {
    const std::string bytes = doorAndWindow().bytes();
    EXPECT_TRUE(Lists(bytes.substr(0, bytes.size() - 1)).empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForAnUnknownClass) {
    EXPECT_TRUE(Lists(TemplateBytes().header(1).newClass("CEattOther").body(u"B", 1, 0)).empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsForAnotherSchema) {
    EXPECT_TRUE(Lists(TemplateBytes().header(1).newClass("CEattBlockInfo", 2).body(u"B", 1, 0)).empty());
}

TEST(ReadLegacyBlkTemplate, EmptiesTheOtherListWhenOneIsMissing) {
    Lists lists;
    ktdxReadLegacyBlkTemplate(L"x", nullptr, &lists.attributeTags);
    ktdxReadLegacyBlkTemplate(L"x", &lists.blockNames, nullptr);
    EXPECT_TRUE(lists.empty());
}

TEST(ReadLegacyBlkTemplate, ListsNothingWhenOneListIsMissing) {
    const TempFile file(doorAndWindow().bytes());
    Lists lists;
    ktdxReadLegacyBlkTemplate(file.wide().c_str(), nullptr, &lists.attributeTags);
    ktdxReadLegacyBlkTemplate(file.wide().c_str(), &lists.blockNames, nullptr);
    EXPECT_TRUE(lists.empty());
}

TEST(ReadLegacyBlkTemplate, FreesAllThatItTookWhenItSucceeds) {
    const TempFile file(doorAndWindow().bytes());
    const std::wstring path = file.wide();
    Lists().read(path.c_str());
    const std::size_t before = counted_memory::current();
    Lists().read(path.c_str());
    EXPECT_EQ(counted_memory::current(), before);
}

TEST(ReadLegacyBlkTemplate, EmptiesTheListsAndFreesAllWhereverMemoryRunsOut) {
    const TempFile file(doorAndWindow().bytes());
    const std::wstring path = file.wide();
    Lists().read(path.c_str());
    const std::size_t before = counted_memory::current();
    std::size_t failures = 0;
    for (bool failed = true; failed; ++failures) {
        Lists lists;
        counted_memory::failAfter(failures);
        lists.read(path.c_str());
        failed = !counted_memory::cancelFailure();
        EXPECT_EQ(lists.empty(), failed) << "allocation " << failures;
    }
    EXPECT_GT(failures, 10U);
    EXPECT_EQ(counted_memory::current(), before);
}

/// Writes down what it is asked to do, and can refuse texts for want of memory.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base
class WatchedList final : public KtDxStringList {
public:
    WatchedList(std::wstring name, std::vector<std::wstring>& calls)
        : name_(std::move(name)),
          calls_(&calls) {}

    void removeAll() override { calls_->push_back(L"empty " + name_); }

    void addTail(const wchar_t* text, std::size_t length) override {
        calls_->push_back(name_ + L" " + std::wstring(text, length));
        if (isFull) {
            throw std::bad_alloc();
        }
    }

    bool isFull = false;

private:
    std::wstring name_;
    std::vector<std::wstring>* calls_;
};

TEST(ReadLegacyBlkTemplate, AlwaysEmptiesTheListOfNamesFirst) {
    const TempFile file(TemplateBytes().header(1).newClass().body(u"B", 1, 1).attribute(u"T", 1).bytes());
    std::vector<std::wstring> calls;
    WatchedList names(L"names", calls);
    WatchedList tags(L"tags", calls);
    tags.isFull = true;
    ktdxReadLegacyBlkTemplate(file.wide().c_str(), &names, &tags);
    EXPECT_THAT(calls, ElementsAre(L"empty names", L"empty tags", L"names B", L"tags T", L"empty names",
                                   L"empty tags"));
}

TEST(ReadLegacyBlkTemplate, PassesOnWhatElseAListThrows) {
    // NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): final, and never deleted by its base
    class Stubborn final : public KtDxStringList {
    public:
        void removeAll() override {}

        void addTail(const wchar_t* /*text*/, std::size_t /*length*/) override {
            throw std::runtime_error("no");
        }
    };

    const TempFile file(doorAndWindow().bytes());
    Stubborn names;
    KtDxStringVector tags;
    EXPECT_THROW(ktdxReadLegacyBlkTemplate(file.wide().c_str(), &names, &tags), std::runtime_error);
}

} // namespace
