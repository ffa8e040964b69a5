#include "tests/kthost/database/DrawingTest.h"

#include <KtDbTable.h>

#include <random>

namespace kthost {

namespace {

/// Random edits of everything that a drawing has. An edit that the drawing refuses is as good as any.
class RandomEdits {
public:
    RandomEdits(Database& drawing, unsigned seed) : drawing_(drawing), random_(seed) {}

    void step() {
        drawing_.history().begin(L"step");
        for (std::size_t i = 0; i < 1 + below(4); ++i) {
            edit();
        }
        EXPECT_EQ(drawing_.history().end(), Orbx::eOk);
    }

private:
    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

    std::wstring text(const wchar_t* prefix) { return prefix + std::to_wstring(below(8)); }

    KtDbObjectId anyOf(const std::vector<KtDbObjectId>& ids) {
        return ids.empty() ? KtDbObjectId() : ids[below(ids.size())];
    }

    KtDbObjectId definition() { return anyOf(records(drawing_, false)); }

    KtDbObjectId container() { return below(2) == 0 ? drawing_.modelSpaceId() : definition(); }

    KtDbObjectId reference() { return anyOf(referencesIn(container())); }

    KtDbObjectId anyReference() {
        const std::uint64_t handle = 1 + below(64);
        return objectByHandle(drawing_, handle);
    }

    std::unique_ptr<Database> external() {
        auto other = std::make_unique<Database>(L"external");
        for (int i = 0; i < 3; ++i) {
            KtDbObjectId id;
            if (addDefinition(*other, text(L"X"), id) == Orbx::eOk) {
                EXPECT_EQ(insertReference(*other, {id, other->modelSpaceId(), {}, {}, {}}, id), Orbx::eOk);
            }
        }
        return other;
    }

    void edit() {
        KtDbObjectId id;
        const auto ignore = [](Orbx::ErrorStatus) {};
        switch (below(20)) {
        case 0:
            return ignore(addDefinition(drawing_, text(L"D"), id));
        case 1:
            return ignore(copyDefinition(drawing_, definition(), text(L"D"), id));
        case 2:
            return ignore(redefine(drawing_, definition(), definition()));
        case 3:
            return ignore(purgeDefinition(drawing_, definition()));
        case 4:
            return ignore(renameDefinition(drawing_, definition(), text(L"D")));
        case 5:
            return ignore(makeDynamic(drawing_, definition()));
        case 6:
            return ignore(addRepresentation(drawing_, definition(), text(L"unit "), id));
        case 7:
            return ignore(ktdbCreateTable(&drawing_, container(), {}, 2, 2, id));
        case 8:
            return ignore(moveReference(drawing_, reference(), {double(below(9)), 0, 0}));
        case 9:
            return ignore(copyReference(drawing_, reference(), {}, id));
        case 10:
            return ignore(eraseReference(drawing_, reference()));
        case 11:
            return ignore(restoreReference(drawing_, anyReference()));
        case 12:
            return ignore(setAttributeText(drawing_, reference(), text(L"T"), text(L"v")));
        case 13:
            return ignore(
                setXData(drawing_, reference(), text(L"APP"), {{KtDbXDataItem::kText, 0, text(L"x")}}));
        case 14:
            return ignore(attachDrawing(
                drawing_, text(L"E"), [this] { return external(); }, id));
        case 15:
            return ignore(reloadDrawing(drawing_, definition()));
        case 16:
            return ignore(detachDrawing(drawing_, definition()));
        case 17:
            return eraseAnAttribute();
        default:
            return ignore(insertReference(
                drawing_, {definition(), container(), {}, {{text(L"T"), text(L"v")}, {L"U", L"u"}}, {}}, id));
        }
    }

    void eraseAnAttribute() {
        const KtDbObjectId owner = reference();
        const std::vector<AttributeView> attributes = attributesOf(owner);
        if (!attributes.empty()) {
            EXPECT_EQ(eraseAttribute(drawing_, attributes[below(attributes.size())].id), Orbx::eOk);
        }
    }

    Database& drawing_;
    std::mt19937 random_;
};

class UndoProperty : public testing::TestWithParam<unsigned> {};

/// Undoes everything, redoes everything, with the state compared at each step in both directions.
void thereAndBack(Database& drawing, const std::vector<std::wstring>& states) {
    for (std::size_t i = states.size() - 1; i-- > 0;) {
        ASSERT_EQ(drawing.history().undo(), Orbx::eOk);
        ASSERT_EQ(dumpDatabase(drawing), states[i]) << "after undoing step " << i;
    }
    ASSERT_EQ(drawing.history().undo(), Orbx::eNothingToUndo);
    for (std::size_t i = 1; i < states.size(); ++i) {
        ASSERT_EQ(drawing.history().redo(), Orbx::eOk);
        ASSERT_EQ(dumpDatabase(drawing), states[i]) << "after redoing step " << i;
    }
    ASSERT_EQ(drawing.history().redo(), Orbx::eNothingToRedo);
}

TEST_P(UndoProperty, LeadsToTheBottomAndBackThroughTheSameStates) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    Database drawing(L"random");
    RandomEdits edits(drawing, GetParam());
    std::vector<std::wstring> states{dumpDatabase(drawing)};
    while (states.size() < 60) {
        const std::size_t before = drawing.history().undoable();
        edits.step();
        if (drawing.history().undoable() != before) {
            states.push_back(dumpDatabase(drawing));
        } else {
            ASSERT_EQ(dumpDatabase(drawing), states.back()) << "a step that was not kept changed something";
        }
    }
    thereAndBack(drawing, states);
    thereAndBack(drawing, states);
}

TEST_P(UndoProperty, LeavesNothingOpenAndReleasesAllThatIsErased) {
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    Database drawing(L"random");
    RandomEdits edits(drawing, GetParam());
    for (std::size_t i = 0; i < 60; ++i) {
        edits.step();
        for (std::size_t back = 0; back < i % 4; ++back) {
            static_cast<void>(drawing.history().undo()); // there may be none left
        }
    }
    EXPECT_TRUE(openObjects().empty());
    drawing.releaseErased();
    EXPECT_EQ(dumpDatabase(drawing).find(L" erased\n"), std::wstring::npos);
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoProperty, testing::Range(1U, 41U));

} // namespace

} // namespace kthost
