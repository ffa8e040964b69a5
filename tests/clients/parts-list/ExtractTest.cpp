#include "Extract.h"

#include "DrawingIds.h"
#include "InUse.h"
#include "OpenObject.h"
#include "PlacedReference.h"

#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExtendedData.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/References.h"
#include "kthost/documents/Host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <KtDbXData.h>

#include <algorithm>
#include <memory>

namespace parts {

namespace {

using kthost::Database;
using testing::ElementsAre;
using testing::IsEmpty;

KtDbObjectId define(Database& database, const wchar_t* name) {
    KtDbObjectId id;
    EXPECT_EQ(kthost::addDefinition(database, name, id), Orbx::eOk);
    return id;
}

KtDbObjectId insert(Database& database, KtDbObjectId definition, KtDbObjectId container,
                    const std::vector<kthost::AttributeText>& attributes) {
    KtDbObjectId id;
    kthost::NewReference reference;
    reference.definition = definition;
    reference.container = container;
    reference.attributes = attributes;
    EXPECT_EQ(kthost::insertReference(database, reference, id), Orbx::eOk);
    return id;
}

/// A drawing with a resistor R1 in model space, and a sheet, placed twice, with a resistor in it that is R2
/// in one place and R10 in the other.
class Extract : public testing::Test {
protected:
    Extract() {
        first_ = insert(database_, resistor_, space_, {{L"Reference", L"R1"}, {L"Value", L"1k"}});
        inner_ = insert(database_, resistor_, sheet_, {{L"Reference", L"R2"}, {L"Value", L"2k"}});
        left_ = insert(database_, sheet_, space_, {{L"Sheetname", L"left"}});
        right_ = insert(database_, sheet_, space_, {{L"Sheetname", L"right"}});
        designate(inner_, {{pathOf(left_), L"R2"}, {pathOf(right_), L"R10"}});
    }

    static std::wstring pathOf(KtDbObjectId reference) {
        return L"/" + handleText(kthost::handleOf(reference));
    }

    void designate(KtDbObjectId reference, const std::vector<std::pair<std::wstring, std::wstring>>& names) {
        std::vector<kthost::XDataValue> values;
        for (const auto& [path, designator] : names) {
            values.push_back({KtDbXDataItem::kText, 0, path});
            values.push_back({KtDbXDataItem::kText, 0, designator});
            values.push_back({KtDbXDataItem::kInteger, 1, L""});
        }
        EXPECT_EQ(kthost::setXData(database_, reference, kKtDbOccurrences, values), Orbx::eOk);
    }

    PartsTable extract(RowKind kind, std::vector<KtDbObjectId> definitions,
                       std::vector<Condition> conditions = {}) {
        Selection selection;
        selection.kind = kind;
        selection.definitions = std::move(definitions);
        selection.conditions = std::move(conditions);
        return extractParts(database_, selection);
    }

    static std::vector<std::wstring> column(const PartsTable& table, const wchar_t* name) {
        const auto place =
            std::find(table.columns.begin(), table.columns.end(), name) - table.columns.begin();
        std::vector<std::wstring> texts;
        for (const Row& row : table.rows) {
            texts.push_back(row.cells.at(static_cast<std::size_t>(place)));
        }
        return texts;
    }

    kthost::Host host_;
    Database database_{L"plan"};
    KtDbObjectId space_ = database_.modelSpaceId();
    KtDbObjectId resistor_ = define(database_, L"R");
    KtDbObjectId sheet_ = define(database_, L"Sheet");
    KtDbObjectId first_;
    KtDbObjectId inner_;
    KtDbObjectId left_;
    KtDbObjectId right_;
};

TEST_F(Extract, ByReferenceHasARowForEachReference) {
    const PartsTable table = extract(RowKind::reference, {resistor_});
    EXPECT_THAT(table.columns, ElementsAre(L"Block", L"Container", L"Handle", L"Reference", L"Value"));
    EXPECT_THAT(column(table, L"Container"), ElementsAre(L"*Model_Space", L"Sheet"));
    EXPECT_THAT(column(table, L"Value"), ElementsAre(L"1k", L"2k"));
}

TEST_F(Extract, OfAllDefinitionsHasAllReferences) {
    EXPECT_EQ(extract(RowKind::reference, listRecords(database_)).rows.size(), 4U);
}

TEST_F(Extract, ByOccurrenceHasARowForEachWayIntoALayout) {
    const PartsTable table = extract(RowKind::occurrence, {resistor_});
    EXPECT_THAT(column(table, L"Reference"), ElementsAre(L"R1", L"R2", L"R10"));
    EXPECT_THAT(column(table, L"Path"), ElementsAre(L"/", pathOf(left_), pathOf(right_)));
}

TEST_F(Extract, ByOccurrenceLeavesOutWhatLiesInNoLayout) {
    const KtDbObjectId spare = define(database_, L"Spare");
    insert(database_, resistor_, spare, {{L"Reference", L"R99"}});
    EXPECT_EQ(extract(RowKind::occurrence, {resistor_}).rows.size(), 3U);
}

TEST_F(Extract, AnOccurrenceWithoutADesignatorHasThatOfTheAttribute) {
    const KtDbObjectId third = insert(database_, sheet_, space_, {});
    const PartsTable table = extract(RowKind::occurrence, {resistor_});
    EXPECT_THAT(column(table, L"Reference"), ElementsAre(L"R1", L"R2", L"R2", L"R10"));
    EXPECT_THAT(column(table, L"Path"), testing::Contains(pathOf(third)));
}

TEST_F(Extract, ByComponentJoinsOccurrencesOfOneDesignator) {
    insert(database_, sheet_, space_, {});
    EXPECT_THAT(column(extract(RowKind::component, {resistor_}), L"Reference"),
                ElementsAre(L"R1", L"R2", L"R10"));
}

TEST_F(Extract, ByComponentLeavesOutDesignatorsWithAHashMarkAndNone) {
    insert(database_, resistor_, space_, {{L"Reference", L"#PWR1"}});
    insert(database_, resistor_, space_, {});
    EXPECT_EQ(extract(RowKind::component, listRecords(database_)).rows.size(), 3U);
}

TEST_F(Extract, ConditionsAllHaveToHold) {
    EXPECT_THAT(column(extract(RowKind::reference, {resistor_}, {{L"Value", L"2k"}}), L"Value"),
                ElementsAre(L"2k"));
    EXPECT_THAT(extract(RowKind::reference, {resistor_}, {{L"Value", L"2k"}, {L"Reference", L"R1"}}).rows,
                IsEmpty());
}

TEST_F(Extract, AMissingAttributeCountsAsEmptyInAConditon) {
    EXPECT_EQ(extract(RowKind::reference, {resistor_}, {{L"dnp", L""}}).rows.size(), 2U);
}

TEST_F(Extract, ErasedReferencesAreLeftOut) {
    EXPECT_EQ(kthost::eraseReference(database_, first_), Orbx::eOk);
    EXPECT_EQ(extract(RowKind::reference, {resistor_}).rows.size(), 1U);
}

TEST_F(Extract, ErasedAttributesAreLeftOut) {
    EXPECT_EQ(kthost::eraseAttribute(database_, kthost::attributesOf(first_).at(1).id), Orbx::eOk);
    EXPECT_THAT(column(extract(RowKind::reference, {resistor_}), L"Value"), ElementsAre(L"", L"2k"));
}

TEST_F(Extract, NeedsTheTableOfBlocks) {
    const OpenObject<KtDbObject> writing(database_.blockTableId(), KtDb::kForWrite);
    EXPECT_THROW(extract(RowKind::reference, {resistor_}), InUse);
}

TEST_F(Extract, NeedsTheDefinitions) {
    const OpenObject<KtDbObject> writing(resistor_, KtDb::kForWrite);
    EXPECT_THROW(extract(RowKind::reference, {resistor_}), InUse);
}

TEST_F(Extract, NeedsTheReferences) {
    const OpenObject<KtDbObject> writing(first_, KtDb::kForWrite);
    EXPECT_THROW(extract(RowKind::reference, {resistor_}), InUse);
}

TEST_F(Extract, NeedsTheAttributes) {
    const OpenObject<KtDbObject> writing(kthost::attributesOf(first_).at(1).id, KtDb::kForWrite);
    EXPECT_THROW(extract(RowKind::reference, {resistor_}), InUse);
}

TEST_F(Extract, ByOccurrenceNeedsTheReferencesToContainers) {
    const OpenObject<KtDbObject> writing(left_, KtDb::kForWrite);
    EXPECT_EQ(extract(RowKind::reference, {resistor_}).rows.size(), 2U);
    EXPECT_THROW(extract(RowKind::occurrence, {resistor_}), InUse);
}

TEST_F(Extract, DoesWithoutWhatIsErased) {
    EXPECT_EQ(kthost::eraseReference(database_, first_), Orbx::eOk);
    const OpenObject<KtDbObject> writing(first_, KtDb::kForWrite, true);
    EXPECT_EQ(extract(RowKind::reference, {resistor_}).rows.size(), 1U);
}

TEST_F(Extract, ReadsBesideOthersThatRead) {
    const OpenObject<KtDbObject> reading(first_);
    const OpenObject<KtDbObject> listening(inner_, KtDb::kForNotify);
    EXPECT_EQ(extract(RowKind::reference, {resistor_}).rows.size(), 2U);
}

TEST_F(Extract, TheListsOwnTableIsLeftOut) {
    Selection selection;
    selection.definitions = {resistor_};
    selection.ownTable = first_;
    EXPECT_EQ(extractParts(database_, selection).rows.size(), 1U);
}

TEST_F(Extract, ARepresentationIsListedUnderItsDefinition) {
    const KtDbObjectId gate = define(database_, L"Gate");
    ASSERT_EQ(kthost::makeDynamic(database_, gate), Orbx::eOk);
    KtDbObjectId unit;
    ASSERT_EQ(kthost::addRepresentation(database_, gate, L"unit 1", unit), Orbx::eOk);
    insert(database_, unit, space_, {{L"Reference", L"U1"}});
    EXPECT_THAT(column(extract(RowKind::reference, {gate}), L"Block"), ElementsAre(L"Gate"));
}

TEST_F(Extract, OfAnAttachedDrawingListsWhatLiesInItUnderTheRecordThatAttachesIt) {
    KtDbObjectId record;
    ASSERT_EQ(kthost::attachDrawing(
                  database_, L"Other",
                  [] {
                      auto other = std::make_unique<Database>(L"other");
                      insert(*other, define(*other, L"Q"), other->modelSpaceId(), {{L"Reference", L"Q1"}});
                      return other;
                  },
                  record),
              Orbx::eOk);
    const KtDbObjectId dependent = kthost::recordByName(database_, L"Other|Q");
    EXPECT_THAT(column(extract(RowKind::reference, {dependent}), L"Container"), ElementsAre(L"Other"));
    EXPECT_THAT(extract(RowKind::occurrence, {dependent}).rows, IsEmpty());
    const KtDbObjectId placed = insert(database_, record, space_, {});
    EXPECT_THAT(column(extract(RowKind::occurrence, {dependent}), L"Path"), ElementsAre(pathOf(placed)));
}

} // namespace

} // namespace parts
