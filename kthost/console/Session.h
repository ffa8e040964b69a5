#pragma once

#include <KtDbObjectId.h>

#include "kthost/console/CommandError.h"
#include "kthost/console/HeldObjects.h"
#include "kthost/reader/ReadProgress.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace kthost {

class Database;
class Document;
enum class CommandUndo : std::uint8_t;
class Host;

/// What the commands of the console work on: the host, and what words mean in its current document.
class Session {
public:
    /// Host and stream must outlive it. `progress` (which may be null) is told about drawings being read.
    Session(Host& host, std::ostream& out, ReadProgress* progress = nullptr);

    Host& host() { return host_; }

    ReadProgress* progress() { return progress_; }

    /// One line of output (UTF-8); what would end it or upset a terminal is shown, not sent.
    void say(std::string_view line);

    /// The current document and its drawing. Throws CommandError when there is none.
    Document& document();
    Database& drawing();

    /// The reference that a word names: a handle as `list` prints it; `@N`, the N-th of the drawing's parts;
    /// `@last`, the reference that the latest command was about, erased or not; or the text of a Reference
    /// attribute. Throws CommandError when it names none, or several.
    KtDbObjectId reference(const std::wstring& word);
    /// The same for an erased one; a designator means an erased reference only.
    KtDbObjectId erasedReference(const std::wstring& word);
    /// The definition that a word names: its name, or `@N` and `@last` for what these references place.
    KtDbObjectId block(const std::wstring& word);

    /// The latest command was about this reference.
    void remember(KtDbObjectId reference) { last_ = reference; }

    /// Runs a command of the host in the current document: its changes are one undo step. Throws CommandError
    /// with what `change` threw; nothing is changed then.
    void edit(const wchar_t* name, const std::function<void(Database&)>& change);
    /// The same for commands that walk the undo steps themselves.
    void walkSteps(const wchar_t* name, const std::function<void(Database&)>& walk);

    /// Runs what `lines` does as one command of the host: the edits in it, and the commands of modules, are
    /// part of that command. Where they edit drawings of other documents, each has one step of its own.
    /// Throws CommandError with what `lines` threw; every drawing is as it was then, and what documents were
    /// opened or chosen stays.
    void editTogether(const std::function<void()>& lines);
    /// To be called before a line that runs together with others edits a drawing.
    void joinTogether(Database& drawing);

    /// True while several lines run as one command.
    bool isTogether() const { return together_; }

    /// What commands keep open until they are told to let go.
    HeldObjects& held() { return held_; }

    void quit() { quitting_ = true; }

    bool isQuitting() const { return quitting_; }

private:
    KtDbObjectId counted(const std::wstring& word);
    KtDbObjectId remembered();
    KtDbObjectId handled(const std::wstring& word, std::uint64_t handle);
    void run(const wchar_t* name, const std::function<void(Database&)>& change, CommandUndo undo);
    void endTogether(bool done);
    static KtDbObjectId onlyOne(const std::wstring& word, const std::vector<KtDbObjectId>& found);

    Host& host_;
    std::ostream& out_;
    ReadProgress* progress_;
    KtDbObjectId last_;
    HeldObjects held_;
    std::vector<Database*> joined_; // with a step open until the lines have run; none can be closed before
    bool together_ = false;
    bool quitting_ = false;
};

} // namespace kthost
