#include "tests/blocks/BlocksTest.h"

#include "kthost/database/OpenObjects.h"

#include <algorithm>
#include <stdexcept>

void must(Orbx::ErrorStatus status) {
    if (status != Orbx::eOk) {
        throw std::runtime_error("a preparation ended with status " + std::to_string(status));
    }
}

KtDbObjectId DrawingEditor::define(std::wstring_view name) {
    KtDbObjectId id;
    must(kthost::addDefinition(*database_, name, id));
    return id;
}

KtDbObjectId DrawingEditor::defineDynamic(std::wstring_view name) {
    const KtDbObjectId id = define(name);
    must(kthost::makeDynamic(*database_, id));
    return id;
}

KtDbObjectId DrawingEditor::anonymous() {
    KtDbObjectId id;
    must(kthost::addAnonymousDefinition(*database_, L'U', id));
    return id;
}

KtDbObjectId DrawingEditor::represent(KtDbObjectId definition, std::wstring_view label) {
    KtDbObjectId id;
    must(kthost::addRepresentation(*database_, definition, label, id));
    return id;
}

void DrawingEditor::adopt(KtDbObjectId definition, KtDbObjectId anonymous, std::wstring_view label) {
    must(kthost::adoptRepresentation(*database_, definition, label, anonymous));
}

KtDbObjectId DrawingEditor::insert(KtDbObjectId definition, KtDbObjectId container,
                                   std::vector<kthost::AttributeText> attributes) {
    kthost::NewReference reference;
    reference.definition = definition;
    reference.container = container.isNull() ? modelSpace() : container;
    reference.attributes = std::move(attributes);
    KtDbObjectId id;
    must(kthost::insertReference(*database_, reference, id));
    return id;
}

KtDbObjectId DrawingEditor::insertWithAttributes(KtDbObjectId definition, std::size_t count,
                                                 KtDbObjectId container) {
    std::vector<kthost::AttributeText> attributes;
    for (std::size_t i = 0; i < count; ++i) {
        attributes.push_back({std::wstring(1, static_cast<wchar_t>(L'A' + i)), L"text"});
    }
    return insert(definition, container, std::move(attributes));
}

void DrawingEditor::move(KtDbObjectId reference) {
    must(kthost::moveReference(*database_, reference, {1.0, 2.0, 3.0}));
}

KtDbObjectId DrawingEditor::copy(KtDbObjectId reference) {
    KtDbObjectId id;
    must(kthost::copyReference(*database_, reference, {}, id));
    return id;
}

void DrawingEditor::erase(KtDbObjectId reference) {
    must(kthost::eraseReference(*database_, reference));
}

void DrawingEditor::restore(KtDbObjectId reference) {
    must(kthost::restoreReference(*database_, reference));
}

void DrawingEditor::purge(KtDbObjectId definition) {
    must(kthost::purgeDefinition(*database_, definition));
}

Ids DrawingEditor::attributesOf(KtDbObjectId reference) {
    Ids ids;
    for (const kthost::AttributeView& attribute : kthost::attributesOf(reference)) {
        ids.push_back(attribute.id);
    }
    return ids;
}

KtDxBlock* BlocksTest::monitorIn(const KtDxBlocks& blocks, KtDbObjectId id) {
    const auto entry = blocks.blockMonitors().find(id);
    return entry == blocks.blockMonitors().end() ? nullptr : entry->second;
}

bool BlocksTest::attach(std::size_t rank, const Ids& ids) {
    KtArray<KtDbObjectId> array;
    for (const KtDbObjectId id : ids) {
        array.append(id);
    }
    return ktdxBlockReferenceMonitorAttach(&document_, &array, client_.at(rank));
}

void BlocksTest::detach(std::size_t rank) {
    ktdxBlockReferenceMonitorDetach(&document_, client_.at(rank));
}

void BlocksTest::command(const std::function<void()>& edit) {
    const kthost::CommandOutcome outcome =
        host().documents().runCommand(document_, L"edit", [&edit](kthost::Document&) {
            edit();
            return kthost::CommandResult::done;
        });
    if (!outcome) {
        throw std::runtime_error(outcome.reason);
    }
    host().loop().pump();
}

void BlocksTest::idle() {
    command([] {});
}

AttachedDrawing BlocksTest::attachDrawing(std::wstring_view name) {
    return attachDrawing(name, [](DrawingEditor&) {});
}

AttachedDrawing BlocksTest::attachDrawing(std::wstring_view name,
                                          const std::function<void(DrawingEditor&)>& fill) {
    AttachedDrawing attached;
    attached.database = std::make_shared<kthost::Database*>(nullptr);
    const auto load = [database = attached.database, fill, text = std::wstring(name)] {
        auto other = std::make_unique<kthost::Database>(text);
        *database = other.get();
        DrawingEditor editor(*other);
        fill(editor);
        return other;
    };
    must(kthost::attachDrawing(drawing(), name, load, attached.record));
    return attached;
}

Recorded recordedOf(KtDxBlock& monitor) {
    Recorded recorded;
    for (const auto& [container, references] : *monitor.references()) {
        recorded[container] = references == nullptr ? Ids() : toIds(*references);
    }
    return recorded;
}

Ids toIds(const KtArray<KtDbObjectId>& array) {
    return {array.begin(), array.end()};
}

IdSet keysOf(const KtDxBlocks& blocks) {
    IdSet keys;
    for (const auto& [key, monitor] : blocks.blockMonitors()) {
        keys.insert(key);
    }
    return keys;
}

Ids heardBy(const KtDbObjectReactor* reactor) {
    Ids ids;
    for (const kthost::AttachedReactor& attached : kthost::attachedReactors()) {
        if (attached.reactor == reactor) {
            ids.push_back(attached.id);
        }
    }
    return ids;
}

std::size_t reactorCount() {
    return kthost::attachedReactors().size();
}

std::size_t openCount() {
    return kthost::openObjects().size();
}

KtDxBlock& BlockMonitorTest::monitor(KtDbObjectId record) {
    KtDxBlock* made = nullptr;
    const OpenedObject<KtDbBlockTableRecord> opened(record, KtDb::kForRead);
    must(opened.status());
    must(owner_->createBlockMonitor(made, opened.get()));
    return *made;
}

KtDxBlock& BlockMonitorTest::enabledMonitor(KtDbObjectId record) {
    KtDxBlock& made = monitor(record);
    must(made.setEnabled(true));
    forgetMarks(made);
    return made;
}

void BlockMonitorTest::forgetMarks(KtDxBlock& block) {
    block.setChanged(false);
    block.setNeedsUpdate(false);
    owner_->rescanWasAsked();
    owner_->changesWereTold();
}
