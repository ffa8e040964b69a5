#include "app/AppDataT.h"

#include "app/KtDxDocument.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/ModuleTest.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using kthost::HostCall;
using testing::_;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// A record whose life can be watched.
class Record : public KtDxDocument {
public:
    explicit Record(KtApDocument* document) : KtDxDocument(document) { alive().push_back(this); }

    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    ~Record() override {
        std::erase(alive(), this);
        destroyed().push_back(document());
        if (atDestruction()) {
            atDestruction()();
        }
    }

    static std::vector<const Record*>& alive() {
        static std::vector<const Record*> records;
        return records;
    }

    /// What a record does when it is being destroyed.
    static std::function<void()>& atDestruction() {
        static std::function<void()> action;
        return action;
    }

    /// Documents of the records that have been destroyed, in that order.
    static std::vector<KtApDocument*>& destroyed() {
        static std::vector<KtApDocument*> documents;
        return documents;
    }
};

/// The registry, its operations written down as they are called.
class Registry : public AppDataT<Record> {
public:
    using AppDataT::cachedRecord;
    using AppDataT::records;
    using Base = AppDataT<Record>;

    Record* getData(KtApDocument* document, bool create) override {
        calls.emplace_back(create ? "getData create" : "getData");
        return Base::getData(document, create);
    }

    bool removeData(KtApDocument* document) override {
        calls.emplace_back("removeData");
        return Base::removeData(document);
    }

    bool isReactorAttached() const override {
        calls.emplace_back("isReactorAttached");
        return Base::isReactorAttached();
    }

    Orbx::ErrorStatus setReactorAttached(bool attach) override {
        calls.emplace_back(attach ? "attach" : "detach");
        return Base::setReactorAttached(attach);
    }

    bool isAutoCreate() const override {
        calls.emplace_back("isAutoCreate");
        return Base::isAutoCreate();
    }

    Orbx::ErrorStatus createDataForAllDocuments() override {
        calls.emplace_back("createDataForAllDocuments");
        return Base::createDataForAllDocuments();
    }

    Orbx::ErrorStatus removeAllData() override {
        calls.emplace_back("removeAllData");
        return Base::removeAllData();
    }

    Orbx::ErrorStatus purgeStaleData() override {
        calls.emplace_back("purgeStaleData");
        return Base::purgeStaleData();
    }

    std::vector<std::string> takeCalls() {
        std::vector<std::string> taken = calls;
        calls.clear(); // and keeps its room
        return taken;
    }

    mutable std::vector<std::string> calls;
};

class DocumentRegistry : public ModuleTest {
protected:
    DocumentRegistry() {
        Record::alive().clear();
        Record::destroyed().clear();
        // What is written down must not be what fails when memory does.
        Record::alive().reserve(100);
        registry_->calls.reserve(100);
    }

    ~DocumentRegistry() override {
        registry_.reset();
        EXPECT_THAT(Record::alive(), IsEmpty());
    }

    void attach() {
        ASSERT_EQ(registry_->setReactorAttached(true), Orbx::eOk);
        registry_->takeCalls();
    }

    static void withoutManager() { faults().fail(HostCall::documentManager, 1, Orbx::eInvalidInput, true); }

    bool has(KtApDocument& document) { return registry_->records().contains(&document); }

    std::size_t recordCount() { return registry_->records().size(); }

    std::unique_ptr<Registry> registry_ = std::make_unique<Registry>();
};

/// Three documents, in ascending order of address.
class ThreeDocuments : public DocumentRegistry {
protected:
    ThreeDocuments() {
        for (const wchar_t* name : {L"a", L"b", L"c"}) {
            sorted_.insert(&open(name));
        }
        const std::vector<KtApDocument*> documents(sorted_.begin(), sorted_.end());
        first_ = documents[0];
        second_ = documents[1];
        third_ = documents[2];
    }

    std::set<KtApDocument*, ByAddress> sorted_;
    KtApDocument* first_ = nullptr;
    KtApDocument* second_ = nullptr;
    KtApDocument* third_ = nullptr;
};

TEST_F(DocumentRegistry, StartsDetachedEmptyAndWithoutAutoCreate) {
    EXPECT_FALSE(registry_->isReactorAttached());
    EXPECT_FALSE(registry_->isAutoCreate());
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
    EXPECT_FALSE(hears(registry_.get()));
}

TEST_F(DocumentRegistry, HasNoRecordForNull) {
    EXPECT_EQ(registry_->getData(nullptr, true), nullptr);
    EXPECT_EQ(recordCount(), 0U);
}

TEST_F(DocumentRegistry, MakesNothingForAnUnknownDocumentUnlessAsked) {
    EXPECT_EQ(registry_->getData(&open(L"plan"), false), nullptr);
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_FALSE(hears(registry_.get()));
}

TEST_F(DocumentRegistry, MakesNothingForADocumentWithoutADrawing) {
    EXPECT_EQ(registry_->getData(&openWithoutDrawing(L"empty"), true), nullptr);
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_FALSE(hears(registry_.get()));
}

TEST_F(DocumentRegistry, MakesAnEnabledRecordOfTheDocument) {
    kthost::Document& document = open(L"plan");
    const Record* record = registry_->getData(&document, true);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->document(), &document);
    EXPECT_TRUE(record->isEnabled());
}

TEST_F(DocumentRegistry, MakesOneRecordADocument) {
    kthost::Document& document = open(L"plan");
    const Record* record = registry_->getData(&document, true);
    EXPECT_EQ(registry_->getData(&document, true), record);
    EXPECT_EQ(registry_->getData(&document, false), record);
    EXPECT_EQ(recordCount(), 1U);
}

TEST_F(ThreeDocuments, FindsTheRecordOfEachDocument) {
    for (KtApDocument* document : {second_, first_, third_}) {
        registry_->getData(document, true);
    }
    for (KtApDocument* document : {third_, second_, first_, second_}) {
        EXPECT_EQ(registry_->getData(document, false)->document(), document);
    }
}

TEST_F(ThreeDocuments, AreNotFoundByAnyOtherAddress) {
    for (KtApDocument* document : {second_, first_, third_}) {
        registry_->getData(document, true);
    }
    for (std::uintptr_t other = 1; other < 10; ++other) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): an address is all that counts of it
        EXPECT_EQ(registry_->getData(reinterpret_cast<KtApDocument*>(other), false), nullptr) << other;
    }
}

TEST_F(ThreeDocuments, KeepsTheRecordFoundLastInTheCache) {
    registry_->getData(first_, true);
    registry_->getData(second_, true);
    EXPECT_EQ(registry_->cachedRecord()->document(), second_);
    registry_->getData(first_, false);
    EXPECT_EQ(registry_->cachedRecord()->document(), first_);
    registry_->getData(third_, false);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
}

TEST_F(DocumentRegistry, FirstRecordAttachesItToTheDocumentManager) {
    registry_->getData(&open(L"plan"), true);
    EXPECT_TRUE(registry_->isReactorAttached());
    EXPECT_TRUE(hears(registry_.get()));
}

TEST_F(DocumentRegistry, FirstRecordIsTheOnlyOneWithoutAutoCreate) {
    kthost::Document& other = open(L"other");
    registry_->getData(&open(L"plan"), true);
    EXPECT_FALSE(has(other));
}

TEST_F(DocumentRegistry, FirstRecordBringsThoseOfAllOpenDocumentsWithAutoCreate) {
    kthost::Document& other = open(L"other");
    withoutManager(); // or switching auto-create on would attach
    std::ignore = registry_->setAutoCreate(true);
    faults().reset();
    ASSERT_EQ(recordCount(), 0U);
    const Record* record = registry_->getData(&open(L"plan"), true);
    EXPECT_EQ(record->document()->name(), std::wstring(L"plan"));
    EXPECT_TRUE(has(other));
}

TEST_F(DocumentRegistry, AttachesAndThenPurgesAfterTheFirstRecord) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("getData create", "isReactorAttached", "attach",
                                                    "isAutoCreate", "purgeStaleData"));
}

TEST_F(DocumentRegistry, PurgesAfterEveryFurtherRecord) {
    attach();
    registry_->getData(&open(L"plan"), true);
    EXPECT_THAT(registry_->takeCalls(),
                ElementsAre("isAutoCreate", "getData create", "isReactorAttached", "purgeStaleData"));
}

TEST_F(DocumentRegistry, FindsARecordWithoutAttachingOrPurging) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    registry_->takeCalls();
    registry_->getData(&document, true);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("getData create"));
}

TEST_F(DocumentRegistry, GivesARecordAlsoWithoutADocumentManager) {
    kthost::Document& document = open(L"plan");
    withoutManager();
    EXPECT_NE(registry_->getData(&document, true), nullptr);
    EXPECT_FALSE(registry_->isReactorAttached());
    faults().reset();
}

TEST_F(DocumentRegistry, IsUnchangedWhenThereIsNoMemoryForARecord) {
    kthost::Document& document = open(L"plan");
    const FailingAllocation failing(1, sizeof(Record));
    EXPECT_EQ(registry_->getData(&document, true), nullptr);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_FALSE(registry_->isReactorAttached());
}

TEST_F(DocumentRegistry, IsUnchangedWhenThereIsNoMemoryForAnEntry) {
    kthost::Document& document = open(L"plan");
    const FailingAllocation failing(2); // the record comes first
    EXPECT_EQ(registry_->getData(&document, true), nullptr);
    EXPECT_TRUE(failing.hasFailed());
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
}

TEST_F(DocumentRegistry, RemovesNothingForNullAndForAnUnknownDocument) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    EXPECT_FALSE(registry_->removeData(nullptr));
    EXPECT_FALSE(registry_->removeData(&open(L"other")));
    EXPECT_TRUE(has(document));
}

TEST_F(DocumentRegistry, DestroysTheRecordThatItRemoves) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    EXPECT_TRUE(registry_->removeData(&document));
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
    EXPECT_FALSE(has(document));
}

TEST_F(DocumentRegistry, WritesNothingIntoWhatItHasRemoved) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    const KeptGivenBack removed;
    registry_->removeData(&document);
    EXPECT_GE(removed.count(), 2U); // the record and its entry
    EXPECT_TRUE(removed.isUntouched());
}

TEST_F(ThreeDocuments, KeepTheOneBehindTheRemovedInTheCache) {
    for (KtApDocument* document : {second_, third_, first_}) {
        registry_->getData(document, true);
    }
    registry_->removeData(first_);
    EXPECT_EQ(registry_->cachedRecord()->document(), second_);
    EXPECT_EQ(registry_->getData(first_, false), nullptr);
}

TEST_F(ThreeDocuments, EmptyTheCacheWhenTheLastIsRemoved) {
    for (KtApDocument* document : {third_, second_, first_}) {
        registry_->getData(document, true);
    }
    registry_->removeData(third_);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
    EXPECT_EQ(registry_->getData(third_, false), nullptr);
}

TEST_F(ThreeDocuments, HaveNoRecordAnyMoreWhileThoseOfOthersAreDestroyed) {
    for (KtApDocument* document : {first_, second_, third_}) {
        registry_->getData(document, true);
    }
    std::vector<const Record*> found;
    Record::atDestruction() = [&] { found.push_back(registry_->getData(first_, false)); };
    std::ignore = registry_->removeAllData();
    Record::atDestruction() = {};
    EXPECT_THAT(found, ElementsAre(_, nullptr, nullptr)); // the first asks for itself
}

TEST_F(DocumentRegistry, AttachesToTheDocumentManagerOnce) {
    attach();
    EXPECT_EQ(registry_->setReactorAttached(true), Orbx::eOk);
    EXPECT_TRUE(hears(registry_.get()));
    std::ignore = registry_->setReactorAttached(false);
    EXPECT_FALSE(hears(registry_.get()));
    EXPECT_FALSE(registry_->isReactorAttached());
}

TEST_F(DocumentRegistry, DoesNotRegisterAgainWhenItIsAttachedAlready) {
    attach();
    host_.documents().removeReactor(registry_.get());
    EXPECT_EQ(registry_->setReactorAttached(true), Orbx::eOk);
    EXPECT_FALSE(hears(registry_.get()));
}

TEST_F(DocumentRegistry, MakesRecordsForAllDocumentsEveryTimeItIsAttachedWithAutoCreate) {
    std::ignore = registry_->setAutoCreate(true);
    registry_->takeCalls();
    std::ignore = registry_->setReactorAttached(true);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("attach", "isAutoCreate", "createDataForAllDocuments"));
}

TEST_F(DocumentRegistry, DestroysAllRecordsWhenItIsDetached) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    EXPECT_EQ(registry_->setReactorAttached(false), Orbx::eOk);
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
    EXPECT_EQ(recordCount(), 0U);
}

TEST_F(DocumentRegistry, DestroysAllRecordsAlsoWhenItWasDetachedAlready) {
    kthost::Document& document = open(L"plan");
    withoutManager(); // or the first record would attach
    registry_->getData(&document, true);
    faults().reset();
    ASSERT_FALSE(registry_->isReactorAttached());
    EXPECT_EQ(registry_->setReactorAttached(false), Orbx::eOk);
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
}

TEST_F(DocumentRegistry, DetachesBeforeItsRecordsGoWithIt) {
    registry_->getData(&open(L"plan"), true);
    std::vector<bool> heard;
    Record::atDestruction() = [&, registry = registry_.get()] { heard.push_back(hears(registry)); };
    registry_.reset();
    Record::atDestruction() = {};
    EXPECT_THAT(heard, ElementsAre(false));
}

TEST_F(DocumentRegistry, TakesItsRecordsWithItAlsoWithoutADocumentManager) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    KtApDocManagerReactor* const left = registry_.get();
    withoutManager();
    registry_.reset();
    faults().reset();
    host_.documents().removeReactor(left);
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
}

TEST_F(DocumentRegistry, DetachesThroughItsOwnOperation) {
    attach();
    std::ignore = registry_->setReactorAttached(false);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("detach", "removeAllData"));
}

TEST_F(DocumentRegistry, StaysAsItIsWithoutADocumentManager) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    withoutManager();
    EXPECT_EQ(registry_->setReactorAttached(false), Orbx::eMissing);
    EXPECT_TRUE(registry_->isReactorAttached());
    EXPECT_TRUE(has(document));
    faults().reset();
}

TEST_F(DocumentRegistry, CannotAttachWithoutADocumentManager) {
    withoutManager();
    EXPECT_EQ(registry_->setReactorAttached(true), Orbx::eMissing);
    EXPECT_FALSE(registry_->isReactorAttached());
    faults().reset();
}

TEST_F(DocumentRegistry, AttachesWhenAutoCreateIsSwitchedOn) {
    kthost::Document& document = open(L"plan");
    EXPECT_EQ(registry_->setAutoCreate(true), Orbx::eOk);
    EXPECT_TRUE(registry_->isAutoCreate());
    EXPECT_TRUE(hears(registry_.get()));
    EXPECT_TRUE(has(document));
}

TEST_F(DocumentRegistry, KeepsAttachedAndItsRecordsWhenAutoCreateIsSwitchedOff) {
    kthost::Document& document = open(L"plan");
    std::ignore = registry_->setAutoCreate(true);
    EXPECT_EQ(registry_->setAutoCreate(false), Orbx::eOk);
    EXPECT_FALSE(registry_->isAutoCreate());
    EXPECT_TRUE(registry_->isReactorAttached());
    EXPECT_TRUE(has(document));
}

TEST_F(DocumentRegistry, SwitchesAutoCreateOnWithStatusOkAlsoWithoutADocumentManager) {
    withoutManager();
    EXPECT_EQ(registry_->setAutoCreate(true), Orbx::eOk);
    EXPECT_TRUE(registry_->isAutoCreate());
    faults().reset();
}

TEST_F(DocumentRegistry, AsksForTheRecordOfEachOpenDocumentInTheOrderOfOpening) {
    kthost::Document& first = open(L"first");
    openWithoutDrawing(L"empty");
    kthost::Document& second = open(L"second");
    attach();
    EXPECT_EQ(registry_->createDataForAllDocuments(), Orbx::eOk);
    EXPECT_TRUE(has(first));
    EXPECT_TRUE(has(second));
    EXPECT_EQ(recordCount(), 2U);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("createDataForAllDocuments", "getData create",
                                                    "isReactorAttached", "purgeStaleData", "getData create",
                                                    "getData create", "isReactorAttached", "purgeStaleData"));
}

TEST_F(DocumentRegistry, LeavesTheCacheEmptyAfterMakingAllRecords) {
    open(L"plan");
    std::ignore = registry_->createDataForAllDocuments();
    EXPECT_EQ(recordCount(), 1U);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
}

TEST_F(DocumentRegistry, CannotMakeAllRecordsWithoutADocumentManagerButEmptiesTheCache) {
    registry_->getData(&open(L"plan"), true);
    withoutManager();
    EXPECT_EQ(registry_->createDataForAllDocuments(), Orbx::eMissing);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
    EXPECT_EQ(recordCount(), 1U);
    faults().reset();
}

TEST_F(DocumentRegistry, CannotMakeAllRecordsWithoutAnIterator) {
    open(L"plan");
    faults().fail(HostCall::documentIterator, 1, Orbx::eInvalidInput);
    EXPECT_EQ(registry_->createDataForAllDocuments(), Orbx::eMissing);
    EXPECT_EQ(recordCount(), 0U);
}

TEST_F(ThreeDocuments, AreAllRemovedInAscendingOrderOfAddress) {
    for (KtApDocument* document : {second_, third_, first_}) {
        registry_->getData(document, true);
    }
    EXPECT_EQ(registry_->removeAllData(), Orbx::eOk);
    EXPECT_THAT(Record::destroyed(), ElementsAre(first_, second_, third_));
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_EQ(registry_->cachedRecord(), nullptr);
}

TEST_F(ThreeDocuments, AreRemovedAlsoWithoutARecord) {
    registry_->records()[first_] = nullptr;
    EXPECT_TRUE(registry_->removeData(first_));
    EXPECT_FALSE(has(*first_));
}

TEST_F(ThreeDocuments, ArePassedOverWhenTheirRecordIsNull) {
    registry_->records()[first_] = nullptr;
    registry_->getData(second_, true);
    EXPECT_EQ(registry_->removeAllData(), Orbx::eOk);
    EXPECT_THAT(Record::destroyed(), ElementsAre(second_));
}

/// A record whose document is no longer open, dropped by a purge, and destroyed by the test.
class StaleRecord : public ThreeDocuments {
protected:
    StaleRecord() {
        attach();
        for (KtApDocument* document : {first_, second_, third_}) {
            registry_->getData(document, true);
        }
        // The document closes without the registry's hearing of it.
        stale_.reset(registry_->getData(second_, false));
        host_.documents().removeReactor(registry_.get());
        EXPECT_TRUE(host_.documents().close(static_cast<kthost::Document&>(*second_)));
        host_.documents().addReactor(registry_.get());
    }

    kthost::Document& later_ = open(L"later"); // before the other goes, whose address it could get
    std::unique_ptr<Record> stale_;
};

TEST_F(StaleRecord, LosesItsEntryInAPurgeAndIsNotDestroyed) {
    EXPECT_EQ(registry_->purgeStaleData(), Orbx::eOk);
    EXPECT_FALSE(registry_->records().contains(second_));
    EXPECT_THAT(Record::alive(), Contains(stale_.get()));
}

TEST_F(StaleRecord, LeavesTheOthersTheirEntries) {
    std::ignore = registry_->purgeStaleData();
    EXPECT_EQ(recordCount(), 2U);
    EXPECT_TRUE(registry_->records().contains(first_));
    EXPECT_TRUE(registry_->records().contains(third_));
}

TEST_F(StaleRecord, HasTheOneBehindItTakeItsPlaceInTheCache) {
    registry_->getData(second_, false);
    std::ignore = registry_->purgeStaleData();
    ASSERT_NE(registry_->cachedRecord(), nullptr);
    EXPECT_EQ(registry_->cachedRecord()->document(), third_);
    EXPECT_EQ(registry_->getData(second_, false), nullptr);
}

TEST_F(StaleRecord, IsDroppedWhenTheNextRecordIsMade) {
    registry_->getData(&later_, true);
    EXPECT_FALSE(registry_->records().contains(second_));
    EXPECT_THAT(Record::alive(), Contains(stale_.get()));
}

TEST_F(StaleRecord, IsDroppedWhenAnotherDocumentIsAboutToBeDestroyed) {
    ASSERT_TRUE(host_.documents().close(static_cast<kthost::Document&>(*first_)));
    EXPECT_FALSE(registry_->records().contains(second_));
    EXPECT_THAT(Record::alive(), Contains(stale_.get()));
}

TEST_F(StaleRecord, IsDroppedWithoutARecordInItsEntry) {
    registry_->records()[second_] = nullptr;
    EXPECT_EQ(registry_->purgeStaleData(), Orbx::eOk);
    EXPECT_FALSE(registry_->records().contains(second_));
}

TEST_F(StaleRecord, StaysWithoutADocumentManager) {
    withoutManager();
    EXPECT_EQ(registry_->purgeStaleData(), Orbx::eMissing);
    EXPECT_TRUE(registry_->records().contains(second_));
    faults().reset();
    std::ignore = registry_->purgeStaleData();
}

TEST_F(StaleRecord, StaysWithoutAnIterator) {
    faults().fail(HostCall::documentIterator, 1, Orbx::eInvalidInput);
    EXPECT_EQ(registry_->purgeStaleData(), Orbx::eMissing);
    EXPECT_TRUE(registry_->records().contains(second_));
    std::ignore = registry_->purgeStaleData();
}

TEST_F(StaleRecord, StaysWhenThereIsNoMemoryToListTheOpenDocuments) {
    {
        const FailingAllocation failing(3); // behind the host's iterator and its list
        EXPECT_EQ(registry_->purgeStaleData(), Orbx::eMissing);
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_TRUE(registry_->records().contains(second_));
    std::ignore = registry_->purgeStaleData();
}

TEST_F(DocumentRegistry, NeverPurgesAnEntryWithANullKey) {
    Record record(nullptr);
    registry_->records()[nullptr] = &record;
    EXPECT_EQ(registry_->purgeStaleData(), Orbx::eOk);
    EXPECT_TRUE(registry_->records().contains(nullptr));
    registry_->records().clear();
}

TEST_F(DocumentRegistry, MakesARecordWhenADocumentIsCreatedWithAutoCreate) {
    std::ignore = registry_->setAutoCreate(true);
    kthost::Document& document = open(L"plan");
    EXPECT_TRUE(has(document));
}

TEST_F(DocumentRegistry, MakesNoRecordWhenADocumentIsCreatedWithoutAutoCreate) {
    attach();
    kthost::Document& document = open(L"plan");
    EXPECT_FALSE(has(document));
}

TEST_F(DocumentRegistry, DestroysTheRecordOfADocumentThatIsAboutToBeDestroyedAndThenPurges) {
    attach();
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    registry_->takeCalls();
    ASSERT_TRUE(host_.documents().close(document));
    EXPECT_EQ(Record::destroyed().size(), 1U);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("removeData", "purgeStaleData"));
}

TEST_F(DocumentRegistry, PurgesAlsoWhenADocumentWithoutARecordIsAboutToBeDestroyed) {
    attach();
    kthost::Document& document = open(L"plan");
    registry_->takeCalls();
    ASSERT_TRUE(host_.documents().close(document));
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("removeData", "purgeStaleData"));
}

TEST_F(DocumentRegistry, DestroysTheRecordOfADocumentWhoseCreationIsCancelledWithoutPurging) {
    std::ignore = registry_->setAutoCreate(true);
    kthost::Document& document =
        host_.documents().prepare(L"plan", std::make_unique<kthost::Database>(L"plan"));
    host_.documents().announce(document);
    ASSERT_TRUE(has(document));
    registry_->takeCalls();
    ASSERT_TRUE(host_.documents().cancelCreation(document));
    EXPECT_EQ(Record::destroyed().size(), 1U);
    EXPECT_THAT(registry_->takeCalls(), ElementsAre("removeData"));
}

TEST_F(DocumentRegistry, DoesNothingAtOtherNotifications) {
    attach();
    kthost::Document& document = open(L"plan");
    registry_->takeCalls();
    host_.documents().setCurrent(nullptr);
    host_.documents().setCurrent(&document);
    host_.documents().lock(document, KtAp::kWrite, L"set");
    host_.documents().unlock(document, L"#set");
    EXPECT_THAT(registry_->takeCalls(), IsEmpty());
}

TEST_F(DocumentRegistry, DetachesAndDestroysItsRecordsWhenItIsDestroyed) {
    kthost::Document& document = open(L"plan");
    registry_->getData(&document, true);
    const KtApDocManagerReactor* reactor = registry_.get();
    registry_.reset();
    EXPECT_FALSE(hears(reactor));
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
}

TEST_F(DocumentRegistry, DestroysItsRecordsAlsoWithoutADocumentManager) {
    kthost::Document& document = open(L"plan");
    withoutManager();
    registry_->getData(&document, true);
    registry_.reset();
    EXPECT_THAT(Record::destroyed(), ElementsAre(&document));
    faults().reset();
}

TEST_F(DocumentRegistry, IsDestroyedDetachedWithoutCallingTheDocumentManager) {
    host_.documents().addReactor(registry_.get()); // by the test, not by the registry
    const KtApDocManagerReactor* reactor = registry_.get();
    registry_.reset();
    EXPECT_TRUE(hears(reactor));
    host_.documents().removeReactor(reactor == nullptr ? nullptr
                                                       : const_cast<KtApDocManagerReactor*>(reactor));
}

} // namespace
