#pragma once

#include <ktdx/KtDxNotify.h>

#include "blocks/KtDxBlocks.h"
#include "blocks/OpenedObject.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/References.h"
#include "tests/support/ClientCallbacks.h"
#include "tests/support/ModuleTest.h"

#include <KtDbBlockTableRecord.h>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

using Ids = std::vector<KtDbObjectId>;
using IdSet = std::set<KtDbObjectId>;
using Ranks = std::vector<std::size_t>;
/// Recorded references by container.
using Recorded = std::map<KtDbObjectId, Ids>;

/// Ends the test when a preparation did not succeed.
void must(Orbx::ErrorStatus status);

/// An id that this process never handed out.
inline constexpr KtDbObjectId kNeverHandedOut{42};

/// Definitions and references of a drawing, made without any ado.
class DrawingEditor {
public:
    explicit DrawingEditor(kthost::Database& database) : database_(&database) {}

    KtDbObjectId modelSpace() const { return database_->modelSpaceId(); }

    KtDbObjectId paperSpace() const { return kthost::recordByName(*database_, L"*Paper_Space"); }

    KtDbObjectId define(std::wstring_view name);
    KtDbObjectId defineDynamic(std::wstring_view name);
    KtDbObjectId anonymous();
    KtDbObjectId represent(KtDbObjectId definition, std::wstring_view label);
    void adopt(KtDbObjectId definition, KtDbObjectId anonymous, std::wstring_view label);
    /// In model space, if in nothing else.
    KtDbObjectId insert(KtDbObjectId definition, KtDbObjectId container = {},
                        std::vector<kthost::AttributeText> attributes = {});
    /// With the attributes A, B, ... in this order.
    KtDbObjectId insertWithAttributes(KtDbObjectId definition, std::size_t count,
                                      KtDbObjectId container = {});
    void move(KtDbObjectId reference);
    KtDbObjectId copy(KtDbObjectId reference);
    void erase(KtDbObjectId reference);
    void restore(KtDbObjectId reference);
    void purge(KtDbObjectId definition);

    /// Erased objects are released for good.
    void release() { database_->releaseErased(); }

    static Ids attributesOf(KtDbObjectId reference);

private:
    kthost::Database* database_;
};

/// A drawing attached as NAME, whose objects the test can edit while it is attached.
struct AttachedDrawing {
    KtDbObjectId record;                         ///< stands for the drawing
    std::shared_ptr<kthost::Database*> database; ///< the other drawing, as it was loaded last
};

/// A document with a drawing to edit, the application object, and functions to attach.
class BlocksTest : public ApplicationTest {
protected:
    kthost::Database& drawing() const { return *document_.database(); }

    KtDxDocument& record() const { return *application_->getData(&document_, true); }

    KtDxBlocks& blocks() const { return *record().blocks(); }

    KtDxBlock* monitorOf(KtDbObjectId id) const { return monitorIn(blocks(), id); }

    /// Null when the id is no key.
    static KtDxBlock* monitorIn(const KtDxBlocks& blocks, KtDbObjectId id);

    bool attach(std::size_t rank, const Ids& ids);
    void detach(std::size_t rank);
    /// A command that does this, and the idle check behind it.
    void command(const std::function<void()>& edit);
    /// A command that changes nothing, and the idle check behind it.
    void idle();
    AttachedDrawing attachDrawing(std::wstring_view name);
    /// The same, the other drawing's objects being made before.
    AttachedDrawing attachDrawing(std::wstring_view name, const std::function<void(DrawingEditor&)>& fill);

    DrawingEditor edit_{drawing()};
    ClientCallbacks client_;
};

/// As it is recorded now.
Recorded recordedOf(KtDxBlock& monitor);
Ids toIds(const KtArray<KtDbObjectId>& array);
IdSet keysOf(const KtDxBlocks& blocks);
/// Objects that hold the reactor, ascending.
Ids heardBy(const KtDbObjectReactor* reactor);
/// Number of reactors on all objects of the process.
std::size_t reactorCount();
std::size_t openCount();

/// A block table monitor of a document record that monitors nothing by itself, as a neighbour for single
/// block monitors. Notes what they tell it.
class QuietOwner : public KtDxBlocks {
public:
    explicit QuietOwner(KtDxDocument& document) { must(attachDocument(&document)); }

    Orbx::ErrorStatus scanBlockTable() override { return Orbx::eOk; }

    void setRescanNeeded(bool on) override {
        rescanAsked_ = rescanAsked_ || on;
        KtDxBlocks::setRescanNeeded(on);
    }

    void setPendingChanges(bool on) override {
        changesTold_ = changesTold_ || on;
        KtDxBlocks::setPendingChanges(on);
    }

    void addRepresentation(KtDbObjectId id, KtDxBlock* block) override {
        representations_.push_back(id);
        KtDxBlocks::addRepresentation(id, block);
    }

    /// Since the last question.
    bool rescanWasAsked() { return std::exchange(rescanAsked_, false); }

    bool changesWereTold() { return std::exchange(changesTold_, false); }

    Ids takeRepresentations() { return std::exchange(representations_, {}); }

private:
    bool rescanAsked_ = false;
    bool changesTold_ = false;
    Ids representations_;
};

/// One block definition "valve" and a monitor of its own, with an owner that scans nothing.
class BlockMonitorTest : public BlocksTest {
protected:
    /// Of a record; entered in the owner's map like every monitor.
    KtDxBlock& monitor(KtDbObjectId record);

    /// Enabled from then on.
    KtDxBlock& enabledMonitor(KtDbObjectId record);

    void forgetMarks(KtDxBlock& block);

    KtDbObjectId valve_ = edit_.define(L"valve");
    std::unique_ptr<QuietOwner> owner_ = std::make_unique<QuietOwner>(record());
};
