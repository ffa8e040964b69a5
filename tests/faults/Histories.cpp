#include "tests/faults/Histories.h"

#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/References.h"
#include "kthost/database/UndoHistory.h"

#include <KtDbTable.h>

#include <memory>

namespace {

using kthost::Database;

KtDbObjectId define(Database& drawing, std::wstring_view name) {
    KtDbObjectId id;
    must(kthost::addDefinition(drawing, name, id));
    return id;
}

KtDbObjectId insert(Database& drawing, KtDbObjectId definition, KtDbObjectId container = {},
                    std::size_t attributes = 1) {
    kthost::NewReference reference;
    reference.definition = definition;
    reference.container = container.isNull() ? drawing.modelSpaceId() : container;
    for (std::size_t i = 0; i < attributes; ++i) {
        reference.attributes.push_back({std::wstring(1, static_cast<wchar_t>(L'A' + i)), L"text"});
    }
    KtDbObjectId id;
    must(kthost::insertReference(drawing, reference, id));
    return id;
}

KtDbObjectId named(Database& drawing, std::wstring_view name) {
    return kthost::recordByName(drawing, name);
}

KtDbObjectId firstOf(Database& drawing, std::wstring_view name) {
    return kthost::referencesTo(named(drawing, name)).at(0);
}

void prepareValves(Stage& stage) {
    stage.open(L"plan");
    Database& drawing = stage.drawing();
    const KtDbObjectId valve = define(drawing, L"valve");
    insert(drawing, valve, {}, 2);
    insert(drawing, valve);
    insert(drawing, define(drawing, L"pump"), valve);
}

void playOneClient(Stage& stage) {
    Database& drawing = stage.drawing();
    stage.attach(0, {named(drawing, L"valve")});
    stage.command([&] { must(kthost::moveReference(drawing, firstOf(drawing, L"valve"), {1, 2, 3})); });
    stage.detach(0);
    stage.attach(1, {named(drawing, L"valve"), named(drawing, L"pump")});
}

void playEdits(Stage& stage) {
    Database& drawing = stage.drawing();
    const KtDbObjectId valve = named(drawing, L"valve");
    stage.attach(0, {valve, named(drawing, L"pump")});
    const KtDbObjectId first = firstOf(drawing, L"valve");
    KtDbObjectId copy;
    stage.command([&] {
        insert(drawing, valve);
        must(kthost::copyReference(drawing, first, {}, copy));
    });
    stage.command([&] { must(kthost::eraseReference(drawing, first)); });
    stage.command([&] {
        must(kthost::restoreReference(drawing, first));
        must(kthost::setAttributeText(drawing, first, L"A", L"other"));
        must(kthost::eraseAttribute(drawing, kthost::attributesOf(copy).at(0).id));
    });
    stage.command([&] {
        must(kthost::eraseReference(drawing, copy));
        insert(drawing, define(drawing, L"tank"), valve);
    });
    must(drawing.history().undo());
    stage.command([] {});
    drawing.releaseErased();
    stage.command([&] { must(kthost::redefine(drawing, valve, named(drawing, L"pump"))); });
}

void playPurge(Stage& stage) {
    Database& drawing = stage.drawing();
    stage.attach(2, {named(drawing, L"valve"), named(drawing, L"pump")});
    stage.command([&] {
        for (const KtDbObjectId reference : kthost::referencesTo(named(drawing, L"valve"))) {
            must(kthost::eraseReference(drawing, reference));
        }
        must(kthost::purgeDefinition(drawing, named(drawing, L"valve")));
    });
    drawing.releaseErased();
    stage.command([&] { insert(drawing, named(drawing, L"pump")); });
    stage.update(false, true);
}

void prepareDynamic(Stage& stage) {
    stage.open(L"plan");
    Database& drawing = stage.drawing();
    KtDbObjectId early;
    must(kthost::addAnonymousDefinition(drawing, L'U', early));
    const KtDbObjectId door = define(drawing, L"door");
    must(kthost::makeDynamic(drawing, door));
    must(kthost::adoptRepresentation(drawing, door, L"early", early));
    KtDbObjectId wide;
    must(kthost::addRepresentation(drawing, door, L"wide", wide));
    insert(drawing, door);
    insert(drawing, early);
    insert(drawing, wide, {}, 2);
}

void playDynamic(Stage& stage) {
    Database& drawing = stage.drawing();
    const KtDbObjectId door = named(drawing, L"door");
    stage.attach(0, {door});
    stage.command([&] {
        KtDbObjectId narrow;
        must(kthost::addRepresentation(drawing, door, L"narrow", narrow));
        insert(drawing, narrow);
    });
    stage.command([&] {
        must(kthost::moveReference(drawing, kthost::referencesTo(kthost::representation(door, L"wide")).at(0),
                                   {1, 1, 1}));
    });
}

void prepareNested(Stage& stage) {
    stage.open(L"plan");
    Database& drawing = stage.drawing();
    const KtDbObjectId bolt = define(drawing, L"bolt");
    const KtDbObjectId left = define(drawing, L"left");
    const KtDbObjectId right = define(drawing, L"right");
    const KtDbObjectId frame = define(drawing, L"frame");
    insert(drawing, bolt, left);
    insert(drawing, bolt, right);
    insert(drawing, left, frame);
    insert(drawing, right, frame);
    insert(drawing, frame);
    insert(drawing, frame, named(drawing, L"*Paper_Space"));
}

void playNested(Stage& stage) {
    Database& drawing = stage.drawing();
    stage.attach(3, {named(drawing, L"bolt")});
    stage.attach(1, {named(drawing, L"frame"), named(drawing, L"left")});
    stage.command([&] { insert(drawing, named(drawing, L"frame")); });
    stage.command([&] { insert(drawing, named(drawing, L"bolt"), named(drawing, L"left")); });
}

std::unique_ptr<Database> otherDrawing() {
    auto other = std::make_unique<Database>(L"other");
    const KtDbObjectId tank = define(*other, L"tank");
    insert(*other, tank);
    insert(*other, tank, define(*other, L"skid"));
    return other;
}

void prepareExternal(Stage& stage) {
    prepareValves(stage);
    KtDbObjectId record;
    must(kthost::attachDrawing(stage.drawing(), L"other", &otherDrawing, record));
    insert(stage.drawing(), record, {}, 0);
}

void playExternal(Stage& stage) {
    Database& drawing = stage.drawing();
    stage.attach(0, {named(drawing, L"other|tank"), named(drawing, L"other")});
    stage.command([&] { must(kthost::reloadDrawing(drawing, named(drawing, L"other"))); });
    stage.command([&] { insert(drawing, named(drawing, L"other"), {}, 0); });
    stage.command([&] {
        KtDbObjectId record;
        must(kthost::attachDrawing(drawing, L"second", &otherDrawing, record));
    });
    stage.command([&] { must(kthost::detachDrawing(drawing, named(drawing, L"second"))); });
}

void playDocuments(Stage& stage) {
    stage.attach(0, {named(stage.drawing(), L"valve")});
    stage.openWithoutDrawing(L"start");
    stage.attachIdle(1, 0, L"start");
    Database& site = *stage.open(L"site").database();
    const KtDbObjectId tree = define(site, L"tree");
    stage.command([&] { insert(site, tree); }, L"site");
    stage.attach(1, {tree}, L"site");
    stage.attachIdle(2, 0, L"site");
    stage.command([&] { insert(site, tree); }, L"site");
    stage.close(L"site");
    kthost::Document& given =
        stage.host().documents().prepare(L"given up", std::make_unique<Database>(L"up"));
    stage.host().documents().announce(given);
    static_cast<void>(stage.host().documents().cancelCreation(given));
    stage.host().documents().setCurrent(&stage.document());
    stage.command([&] {
        must(kthost::moveReference(stage.drawing(), firstOf(stage.drawing(), L"valve"), {1, 2, 3}));
    });
}

void playIdleClients(Stage& stage) {
    stage.attachIdle(0, 100);
    stage.attachIdle(3, 50);
    stage.command([] {});
    stage.host().clock().advance(60);
    stage.command([] {});
    stage.detachIdle(0);
    stage.detachIdle(3);
    stage.command([] {});
    stage.attachIdle(2, 0);
    stage.attach(1, {named(stage.drawing(), L"valve")});
    stage.command([] {});
}

void prepareTables(Stage& stage) {
    prepareExternal(stage);
    KtDbObjectId table;
    for (int i = 0; i < 2; ++i) {
        must(ktdbCreateTable(&stage.drawing(), stage.drawing().modelSpaceId(), {}, 2, 2, table));
    }
}

void playTables(Stage& stage) {
    Stage::Ids ids{stage.drawing().modelSpaceId()};
    stage.tableBlocks(ids);
    stage.tables(ids);
    stage.attach(0, {named(stage.drawing(), L"*T1")});
    stage.tables(ids);
}

void playFromInside(Stage& stage) {
    Database& drawing = stage.drawing();
    const KtDbObjectId valve = named(drawing, L"valve");
    stage.attach(0, {valve});
    stage.attach(2, {valve});
    stage.onCall(0, [&stage] {
        stage.detach(0);
        stage.detach(2);
    });
    stage.onCall(2, [&stage, valve] { stage.attach(1, {valve}); });
    stage.command([&] {
        insert(drawing, valve);
        stage.update(true, true); // in the middle of the command
        insert(drawing, valve);
    });
    stage.attach(1, {valve});
    stage.command([&] { insert(drawing, valve); });
    stage.detach(0);
    stage.detach(2);
}

void playGraph(Stage& stage) {
    stage.attach(0, {named(stage.drawing(), L"other")});
    stage.askGraph();
}

/// The host has no time for idle checks.
void playBusy(Stage& stage) {
    Database& drawing = stage.drawing();
    kthost::Document& plan = stage.document();
    const KtDbObjectId valve = named(drawing, L"valve");
    stage.attach(0, {valve});
    stage.attachIdle(1, 1000);
    plan.setPendingInputCount(1);
    stage.command([&] { insert(drawing, valve); });
    plan.setPendingInputCount(0);
    plan.setDialogOpen(true);
    stage.command([] {});
    plan.setDialogOpen(false);
    stage.host().documents().lock(plan, KtAp::kWrite, L"palette");
    stage.command([] {});
    static_cast<void>(stage.host().documents().unlock(plan, L"palette"));
    stage.command([] {});
    stage.command([] {}); // too early for the interval
    stage.attach(2, {});
    stage.attachIdle(1, 0);
}

} // namespace

const std::vector<History>& histories() {
    static const std::vector<History> all{
        {"OneClient", &prepareValves, &playOneClient}, {"Edits", &prepareValves, &playEdits},
        {"Purge", &prepareValves, &playPurge},         {"Dynamic", &prepareDynamic, &playDynamic},
        {"Nested", &prepareNested, &playNested},       {"External", &prepareExternal, &playExternal},
        {"Documents", &prepareValves, &playDocuments}, {"IdleClients", &prepareValves, &playIdleClients},
        {"Tables", &prepareTables, &playTables},       {"FromInside", &prepareValves, &playFromInside},
        {"Graph", &prepareExternal, &playGraph},       {"Busy", &prepareValves, &playBusy},
    };
    return all;
}
