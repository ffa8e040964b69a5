#pragma once

#include <KtDbDatabase.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace kthost {

struct DatabaseContents;
class UndoHistory;

/// A drawing: owns its objects, hands out their handles and keeps their history. What edits a drawing stands
/// in Definitions.h, DynamicDefinitions.h, References.h, Attributes.h, Tables.h, ExtendedData.h and
/// ExternalReferences.h; what asks about it in DatabaseQueries.h. User-interface thread only.
class Database final : public KtDbDatabase {
public:
    enum class Layouts : std::uint8_t { modelAndPaperSpace, none };

    /// A drawing with its block table and, unless told otherwise, the empty layouts "*Model_Space" and
    /// "*Paper_Space". Nothing of that is kept for undo.
    explicit Database(std::wstring name, Layouts layouts = Layouts::modelAndPaperSpace);
    /// Says goodbye to every object in ascending order of id, whoever may have it open, and releases it. The
    /// drawings attached to this one go with it. Ids stay valid and have no database from then on.
    ~Database() override;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    KtDbObjectId blockTableId() const override;
    bool setUndoRecording(bool on) override;
    bool undoRecording() const;

    /// What people call the drawing.
    const std::wstring& name() const;
    void setName(std::wstring name);

    /// The null id when there is none, or it is erased.
    KtDbObjectId modelSpaceId() const;

    UndoHistory& history();

    /// Forgets the history and releases every erased object and what it owns, each with its goodbye, except
    /// those that somebody has open and what these belong to. Lists drop them; opening their ids gives
    /// eObjectReleased. Gives the number released; 0 while a step is being recorded or played back.
    std::size_t releaseErased();

    /// For the files of this folder.
    DatabaseContents& contents() { return *contents_; }

    const DatabaseContents& contents() const { return *contents_; }

private:
    std::unique_ptr<DatabaseContents> contents_;
};

/// Every database of this host is of that class.
Database& hostDatabase(KtDbDatabase& database);

} // namespace kthost
