#include "tests/blocks/BlocksTest.h"

namespace {

/// Edits and has the monitor updated while its update asks which record stands for an attached drawing.
class InterruptingOwner : public QuietOwner {
public:
    using QuietOwner::QuietOwner;

    KtDbObjectId findXrefBlock(KtDbObjectId id) const override {
        if (const auto interrupt = std::exchange(interrupt_, nullptr)) {
            interrupt();
        }
        return QuietOwner::findXrefBlock(id);
    }

    void interrupt(std::function<void()> interrupt) { interrupt_ = std::move(interrupt); }

private:
    mutable std::function<void()> interrupt_;
};

class UpdateInsideUpdate : public BlocksTest {
protected:
    KtDbObjectId pipe_;
    AttachedDrawing other_ = attachDrawing(L"other", [this](DrawingEditor& editor) {
        pipe_ = editor.define(L"pipe");
        for (int i = 0; i < 8; ++i) { // as many as there is room for
            editor.insert(pipe_);
        }
    });
    InterruptingOwner owner_{record()};

    KtDxBlock& monitorOfPipes() {
        KtDxBlock* block = nullptr;
        const OpenedObject<KtDbBlockTableRecord> opened(pipe_, KtDb::kForRead);
        must(owner_.createBlockMonitor(block, opened.get()));
        return *block;
    }

    /// Inside its next update.
    void insertAndUpdateInside(KtDxBlock& block) {
        owner_.interrupt([this, &block] {
            DrawingEditor(**other_.database).insert(pipe_);
            EXPECT_EQ(block.refresh(), Orbx::eOk);
        });
    }
};

TEST_F(UpdateInsideUpdate, MayChangeTheListsThatTheOuterOneFollows) {
    KtDxBlock& block = monitorOfPipes();
    insertAndUpdateInside(block);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_GE(recordedOf(block)[other_.record].size(), 9U); // those met before the inner one come twice
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block)[other_.record].size(), 9U);
}

TEST_F(UpdateInsideUpdate, EndsWhereSomebodyHasTakenAnArrayAwayInIt) {
    KtDxBlock& block = monitorOfPipes();
    DrawingEditor(**other_.database).insert(pipe_);
    owner_.interrupt([this, &block] { block.references()->at(other_.record).reset(); });
    EXPECT_EQ(block.refresh(), Orbx::eMissing);
}

TEST_F(UpdateInsideUpdate, ThenEnabledAndDisabledNothingIsHeardAnyMore) {
    DrawingEditor other(**other_.database);
    for (int i = 0; i < 70; ++i) { // more than one chunk of the attributes' map
        other.insertWithAttributes(pipe_, 1);
    }
    KtDxBlock& block = monitorOfPipes();
    insertAndUpdateInside(block);
    must(block.refresh());
    must(block.setEnabled(true));
    must(block.setEnabled(false));
    EXPECT_EQ(heardBy(&block), Ids{});
    EXPECT_TRUE(block.attributesByReference().empty());
}

TEST_F(UpdateInsideUpdate, IsPutRightByTheNextOneThoughNobodyHasLooked) {
    KtDxBlock& block = monitorOfPipes();
    insertAndUpdateInside(block);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(block.refresh(), Orbx::eOk);
    EXPECT_EQ(recordedOf(block)[other_.record].size(), 9U);
}

} // namespace
