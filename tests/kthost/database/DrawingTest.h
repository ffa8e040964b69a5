#pragma once

#include "kthost/database/Attributes.h"
#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/database/ExtendedData.h"
#include "kthost/database/ExternalReferences.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/database/References.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/runtime/Faults.h"
#include "tests/kthost/database/EventLog.h"

#include <KtArray.h>
#include <KtDbAttribute.h>
#include <KtDbBlockReference.h>
#include <KtDbBlockTable.h>
#include <KtDbBlockTableRecord.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace kthost {

/// A small drawing to try things on: the definition "R" and nothing placed.
class DrawingTest : public testing::Test {
protected:
    using Events = std::vector<std::string>;

    DrawingTest() { resistor = define(L"R"); }

    ~DrawingTest() override { Faults::instance().reset(); }

    DrawingTest(const DrawingTest&) = delete;
    DrawingTest& operator=(const DrawingTest&) = delete;

    KtDbObjectId define(const std::wstring& name) { return define(drawing, name); }

    static KtDbObjectId define(Database& database, const std::wstring& name) {
        KtDbObjectId id;
        EXPECT_EQ(addDefinition(database, name, id), Orbx::eOk);
        return id;
    }

    KtDbObjectId place(KtDbObjectId definition, KtDbObjectId container,
                       std::vector<AttributeText> attributes = {}) {
        return place(drawing, definition, container, std::move(attributes));
    }

    static KtDbObjectId place(Database& database, KtDbObjectId definition, KtDbObjectId container,
                              std::vector<AttributeText> attributes = {}) {
        KtDbObjectId id;
        EXPECT_EQ(insertReference(database, {definition, container, {}, std::move(attributes), {}}, id),
                  Orbx::eOk);
        return id;
    }

    /// A resistor in model space.
    KtDbObjectId place(std::vector<AttributeText> attributes = {}) {
        return place(resistor, drawing.modelSpaceId(), std::move(attributes));
    }

    static Orbx::ErrorStatus tryOpen(KtDbObjectId id, KtDb::OpenMode mode, bool openErased = false) {
        KtDbObject* object = nullptr;
        return ktdbOpenObject(object, id, KtDbObject::desc(), mode, openErased);
    }

    static KtDbObject* open(KtDbObjectId id, KtDb::OpenMode mode) {
        KtDbObject* object = nullptr;
        EXPECT_EQ(ktdbOpenObject(object, id, KtDbObject::desc(), mode, true), Orbx::eOk);
        return object;
    }

    static bool isReleased(KtDbObjectId id) {
        KtDbObject* object = nullptr;
        const Orbx::ErrorStatus status =
            ktdbOpenObject(object, id, KtDbObject::desc(), KtDb::kForNotify, true);
        if (object != nullptr) {
            close(object);
        }
        return status == Orbx::eObjectReleased;
    }

    template <class T>
    static T* openAs(KtDbObjectId id, KtDb::OpenMode mode) {
        T* object = nullptr;
        EXPECT_EQ(ktdbOpenObject(object, id, mode, true), Orbx::eOk);
        return object;
    }

    static void close(KtDbObject* object) { EXPECT_EQ(object->close(), Orbx::eOk); }

    static void watch(KtDbObjectId id, KtDbObjectReactor& reactor) {
        KtDbObject* object = open(id, KtDb::kForNotify);
        EXPECT_EQ(object->addReactor(&reactor), Orbx::eOk);
        close(object);
    }

    static void unwatch(KtDbObjectId id, KtDbObjectReactor& reactor) {
        KtDbObject* object = open(id, KtDb::kForNotify);
        EXPECT_EQ(object->removeReactor(&reactor), Orbx::eOk);
        close(object);
    }

    static KtDbObjectId attribute(KtDbObjectId reference, std::size_t index = 0) {
        return attributesOf(reference).at(index).id;
    }

    /// "modified 7" for the event and the object.
    static std::string event(const std::string& name, KtDbObjectId id) {
        return name + ' ' + std::to_string(handleOf(id));
    }

    static std::string event(const std::string& name, KtDbObjectId id, KtDbObjectId other) {
        const std::string between = name == "copied" ? " to " : " by ";
        return event(name, id) + between + std::to_string(handleOf(other));
    }

    static std::vector<KtDbObjectId> living(KtDbObjectId record, bool directOnly = true) {
        auto* opened = openAs<KtDbBlockTableRecord>(record, KtDb::kForRead);
        KtArray<KtDbObjectId> ids;
        EXPECT_EQ(opened->getBlockReferenceIds(ids, directOnly), Orbx::eOk);
        close(opened);
        return {ids.begin(), ids.end()};
    }

    static std::vector<KtDbObjectId> erased(KtDbObjectId record) {
        auto* opened = openAs<KtDbBlockTableRecord>(record, KtDb::kForRead);
        KtArray<KtDbObjectId> ids;
        EXPECT_EQ(opened->getErasedBlockReferenceIds(ids), Orbx::eOk);
        close(opened);
        return {ids.begin(), ids.end()};
    }

    template <typename Change>
    void step(Change change) {
        drawing.history().begin(L"step");
        change();
        EXPECT_EQ(drawing.history().end(), Orbx::eOk);
    }

    Database drawing{L"test"};
    KtDbObjectId resistor;
};

} // namespace kthost
