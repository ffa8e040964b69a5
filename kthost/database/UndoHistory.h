#pragma once

#include <OrbxErrorStatus.h>

#include "kthost/database/UndoStep.h"

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace kthost {

class Database;

/// The steps that a drawing's user can take back and do again. A command is one step: begin, changes, end (or
/// cancel, which rolls them back). A step without changes is not kept. The first step kept after an undo
/// forgets what could be redone; one that is cancelled does not.
///
/// A change made while no step is open joins the latest step that can be undone; where there is none it
/// becomes part of the state below the first step. A change made while recording is off is not kept, and
/// leaves undo and redo steps what they were.
///
/// Each change taken back or done again opens for modify what it changes. An edit sends modify-undone; an
/// erase or restore sends erased and modify-undone; an appending sends unappended or reappended. An object
/// whose appending is undone stays in memory, erased, until the step is forgotten. An erased object that no
/// step mentions any more, because its last one was forgotten, is released with its goodbye at the end of the
/// step, undo or redo during which that happens.
class UndoHistory {
public:
    explicit UndoHistory(Database& database) : database_(database) {}

    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;
    ~UndoHistory() = default;

    /// A step begun inside another becomes part of it.
    void begin(std::wstring name);
    /// eNotNow when no step is open.
    Orbx::ErrorStatus end();
    /// Takes back what the step did so far. When an object concerned is open the status says how, nothing is
    /// taken back, and the step is kept as if it had ended. The step of an outer `begin` is rolled back as a
    /// whole, when that ends.
    Orbx::ErrorStatus cancel();

    bool isRecordingStep() const { return depth_ != 0; }

    /// Takes the latest step back. Nothing is changed when an object concerned is open (the status says how),
    /// while a step is open (eNotNow) or when there is none (eNothingToUndo).
    Orbx::ErrorStatus undo();
    /// The same forwards; eNothingToRedo.
    Orbx::ErrorStatus redo();

    std::size_t undoable() const { return done_.size(); }

    std::size_t redoable() const { return undone_.size(); }

    /// Name of the step that undo or redo would take; there has to be one.
    const std::wstring& undoName() const { return done_.back().name; }

    const std::wstring& redoName() const { return undone_.back().name; }

    /// Forgets all steps, and counts what was released with them. eNotNow while a step is open.
    Orbx::ErrorStatus discard(std::size_t& released);
    Orbx::ErrorStatus discard();
    /// At most this many steps are kept, the latest; unlimited at first.
    void setLimit(std::size_t steps);

    /// Said of every change, once it is done; ignored while recording is off and while changes are played.
    void record(UndoRecord record);

    /// True while changes are being taken back or done again.
    bool isPlaying() const { return playing_; }

private:
    Orbx::ErrorStatus play(UndoStep& step, bool backwards);
    void forget(UndoStep step);
    void forgetUndone();
    void applyLimit();
    Orbx::ErrorStatus takeBack();
    std::size_t releaseForgotten();

    Database& database_;
    std::deque<UndoStep> done_;
    std::vector<UndoStep> undone_;
    UndoStep open_;
    std::unordered_map<KtDbObjectId, std::size_t> mentions_; // records that name the object, in all steps
    std::vector<UndoStep> dropped_; // may hold attached drawings, which must not go in the middle of a change
    std::vector<KtDbObjectId> forgotten_; // lost their last mention; looked at later
    std::size_t limit_ = static_cast<std::size_t>(-1);
    std::size_t depth_ = 0;
    bool cancelled_ = false;
    bool playing_ = false;
};

} // namespace kthost
