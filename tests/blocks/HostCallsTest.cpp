#include "tests/blocks/BlocksTest.h"
#include "tests/support/HostTrace.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>

/// What the monitors ask of the host, call by call: in which order, in which mode, and with erased objects or
/// without them.
namespace {

using kthost::HostCall;
using testing::ElementsAre;
using testing::ElementsAreArray;

using Names = std::map<KtDbObjectId, std::string>;
using Calls = std::vector<std::string>;

class BlockCalls : public BlockMonitorTest {
protected:
    KtDbObjectId reference_ = edit_.insertWithAttributes(valve_, 1);
    Names names_{{valve_, "valve"},
                 {reference_, "reference"},
                 {DrawingEditor::attributesOf(reference_)[0], "attribute"}};
    KtDxBlock& block_ = monitor(valve_);
};

TEST_F(BlockCalls, WhenEnabledAreForReferencesWithTheirAttributesAndThenForRecords) {
    const HostTrace trace;
    must(block_.setEnabled(true));
    EXPECT_THAT(trace.calls(names_),
                ElementsAre("open reference notify openErased", "addReactor reference",
                            "attributeIterator reference", "open attribute notify openErased",
                            "addReactor attribute", "close attribute", "close reference", "open valve notify",
                            "addReactor valve", "close valve"));
}

const Calls kLettingGo{
    "open reference notify openErased", "removeReactor reference", "open attribute notify openErased",
    "removeReactor attribute",          "close attribute",         "close reference",
    "open valve notify openErased",     "removeReactor valve",     "close valve"};

TEST_F(BlockCalls, WhenDisabledAreForReferencesWithTheirAttributesAndThenForRecords) {
    must(block_.setEnabled(true));
    const HostTrace trace;
    must(block_.setEnabled(false));
    EXPECT_THAT(trace.calls(names_), ElementsAreArray(kLettingGo));
}

TEST_F(BlockCalls, WhenDestroyedAreThoseOfDisabling) {
    must(block_.setEnabled(true));
    const HostTrace trace;
    owner_->reset();
    EXPECT_THAT(trace.calls(names_), ElementsAreArray(kLettingGo));
}

TEST_F(BlockCalls, WhenDestroyedAreForTheAttributesOfAReferenceThatWillNotOpenAtTheEnd) {
    must(block_.setEnabled(true));
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    const HostTrace trace;
    owner_->reset();
    EXPECT_THAT(trace.calls(names_),
                ElementsAre("open reference notify openErased", "open valve notify openErased",
                            "removeReactor valve", "close valve", "open attribute notify openErased",
                            "removeReactor attribute", "close attribute", "open reference notify openErased",
                            "removeReactor reference", "close reference"));
}

TEST_F(BlockCalls, WhenUpdatedAreForDirectAndErasedReferencesAndThenForEachOfThem) {
    const HostTrace trace;
    must(block_.refresh());
    EXPECT_THAT(trace.calls(names_),
                ElementsAre("open valve read", "getBlockReferenceIds valve directOnly forceValidity",
                            "getErasedBlockReferenceIds valve", "close valve",
                            "open reference read openErased", "close reference"));
}

/// A drawing of one block with one reference, beside its layouts.
class TableCalls : public BlocksTest {
protected:
    KtDbObjectId valve_ = edit_.define(L"valve");
    KtDbObjectId reference_ = edit_.insert(valve_);
    Names names_{{drawing().blockTableId(), "table"}, {valve_, "valve"}, {reference_, "reference"}};
};

const Calls kLettingGoOfATable{
    "open table notify openErased", "removeReactor table", "open reference notify openErased",
    "removeReactor reference",      "close reference",     "open valve notify openErased",
    "removeReactor valve",          "close valve",         "close table"};

TEST_F(TableCalls, WhenEnabledAreForTheTableAndThenForItsBlocks) {
    KtDxBlocks& made = blocks();
    const HostTrace trace;
    must(made.setEnabled(true));
    EXPECT_THAT(trace.calls(names_),
                ElementsAre("open table notify", "addReactor table", "open reference notify openErased",
                            "addReactor reference", "attributeIterator reference", "close reference",
                            "open valve notify", "addReactor valve", "close valve", "close table"));
}

TEST_F(TableCalls, WhenDisabledAreForTheTableAndThenForItsBlocks) {
    must(blocks().setEnabled(true));
    const HostTrace trace;
    must(blocks().setEnabled(false));
    EXPECT_THAT(trace.calls(names_), ElementsAreArray(kLettingGoOfATable));
}

TEST_F(TableCalls, WhenDestroyedAreThoseOfDisabling) {
    auto made = std::make_unique<KtDxBlocks>();
    must(made->attachDocument(&record()));
    must(made->setEnabled(true));
    const HostTrace trace;
    made.reset();
    EXPECT_THAT(trace.calls(names_), ElementsAreArray(kLettingGoOfATable));
}

TEST_F(TableCalls, WhenTheRecordGoesDisableTwiceIfTheTableWillNotOpenAtFirst) {
    must(blocks().setEnabled(true));
    faults().fail(HostCall::openObject, 1, Orbx::eTooManyReaders);
    const HostTrace trace;
    application_->removeData(&document_);
    Calls expected{"open table notify openErased"};
    expected.insert(expected.end(), kLettingGoOfATable.begin(), kLettingGoOfATable.end());
    EXPECT_THAT(trace.calls(names_), ElementsAreArray(expected));
}

TEST_F(TableCalls, WhenScanningWalkTheLivingRecordsFromTheFirst) {
    KtDxBlocks& made = blocks();
    const HostTrace trace;
    must(made.scanBlockTable());
    EXPECT_THAT(trace.calls({{drawing().blockTableId(), "table"}}),
                ElementsAre("open table read", "newIterator table", "start table atBeginning skipErased",
                            "close table"));
}

TEST_F(TableCalls, WhenScanningAnAnonymousRecordAskItsDirectReferencesErasedOrNot) {
    const KtDbObjectId anonymous = edit_.anonymous();
    const KtDbObjectId reference = edit_.insert(anonymous);
    KtDxBlocks& made = blocks();
    const HostTrace trace;
    must(made.scanBlockTable());
    Calls calls = trace.calls({{anonymous, "record"}, {reference, "reference"}});
    ASSERT_GE(calls.size(), 4U);
    calls.resize(4); // its monitor's update comes behind
    EXPECT_THAT(calls, ElementsAre("open record read", "getBlockReferenceIds record directOnly forceValidity",
                                   "open reference notify openErased", "originalBlockTableRecord reference"));
}

TEST_F(TableCalls, WhenLookingForAnAttachedDrawingDoNotLoadIt) {
    const AttachedDrawing other = attachDrawing(L"other");
    KtDxBlocks& made = blocks();
    const HostTrace trace;
    EXPECT_EQ(made.findXrefBlock((*other.database)->modelSpaceId()), other.record);
    EXPECT_THAT(trace.calls({{other.record, "record"}}),
                ElementsAre("open record read", "externalDatabase record", "close record"));
}

} // namespace
