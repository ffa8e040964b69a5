#pragma once

#include <KtApDocManager.h>
#include <KtApDocManagerReactor.h>

#include "kthost/documents/CommandOutcome.h"
#include "kthost/documents/Document.h"
#include "kthost/runtime/CodeOrigin.h"
#include "kthost/runtime/HostResult.h"
#include "kthost/runtime/ListenerList.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kthost {

/// Whether a command's changes become an undo step. Undo and redo themselves walk the steps and make none.
enum class CommandUndo : std::uint8_t { step, none };

/// The open documents, the current one, and the commands that run in them. Tells the reactors, and the loaded
/// modules, what happens. One at a time in a process; user-interface thread only.
class DocumentManager final : public KtApDocManager {
public:
    DocumentManager();
    /// Closes what is still open.
    ~DocumentManager() override;

    static DocumentManager* current();

    KtApDocument* curDocument() const override { return current_; }

    KtApDocumentIterator* newDocumentIterator() override;
    void addReactor(KtApDocManagerReactor* reactor) override;
    void removeReactor(KtApDocManagerReactor* reactor) override;
    int pendingInputCount(KtApDocument* document) const override;

    /// Opens a document: announced as created, then made the current one. `database` may be null.
    Document& create(std::wstring name, std::unique_ptr<Database> database);

    /// The same in two steps, for a creation that can still be cancelled: a prepared document is known to
    /// nobody until it is announced; announcing does not make it current.
    Document& prepare(std::wstring name, std::unique_ptr<Database> database);
    void announce(Document& document);
    /// Takes a creation back, whether it was announced or not; the document is destroyed.
    HostResult cancelCreation(Document& document);

    /// Announces the end of a document and destroys it with its drawing. If it was the current one, the one
    /// that was current before becomes current. Refused with eNotNow while a command or module code runs.
    HostResult close(Document& document);
    /// Closes all, the youngest first, whatever runs: only for the host's own end.
    void closeAll();

    /// Null: no document is current any more.
    void setCurrent(Document* document);

    Document* currentDocument() const { return current_; }

    /// In the order in which they were announced.
    const std::vector<Document*>& documents() const { return open_; }

    /// Null when no open document has that name.
    Document* find(std::wstring_view name) const;
    /// The open document whose drawing that is; null when there is none.
    Document* documentOf(const KtDbDatabase* database) const;

    /// What a command does. It throws, or gives a result other than done, to have its changes undone.
    using CommandFunction = std::function<CommandResult(Document& document)>;

    /// Runs a command: the document is locked for writing (announced with the command's name), its changes
    /// are one undo step, and the lock is given back (announced with "#" and the name) however it ended. What
    /// the command throws ends up in the reason, and so does what it said through `failCommand`. A command
    /// inside a command is refused and announces nothing.
    CommandOutcome runCommand(Document& document, const std::wstring& name, const CommandFunction& function,
                              CommandUndo undo = CommandUndo::step);

    /// Says why the running command cannot be done; without effect when none runs.
    void failCommand(std::string reason);

    bool isCommandActive() const { return activeCommand_ != nullptr; }

    /// Locks a document outside a command, as a palette or another execution context does. Announced like a
    /// command's lock. Locks are given back in the opposite order.
    void lock(Document& document, KtAp::DocLockMode mode, const std::wstring& name,
              LockContext context = LockContext::own);
    /// False when nothing is locked.
    bool unlock(Document& document, const std::wstring& name);

    using Reactors = ListenerList<KtApDocManagerReactor, CodeOrigin>;

    Reactors& reactors() { return reactors_; }

    const Reactors& reactors() const { return reactors_; }

    /// Called when everybody has heard that a document is about to be destroyed, while its drawing is still
    /// there.
    std::function<void(Document&)> onDestroying;

private:
    struct ActiveCommand;
    class CommandScope;
    class LocksRestored;

    void end(Document& document);
    void destroy(Document& document);
    void withdraw(const Document& document);
    void changeLocks(Document& document, std::vector<Document::Lock> locks, const std::wstring& name);
    CommandOutcome perform(Document& document, const ActiveCommand& command, const CommandFunction& function,
                           CommandUndo undo);

    template <typename Notification>
    void notify(const char* event, const KtApDocument* document, Notification&& notification);

    std::vector<std::unique_ptr<Document>> owned_; // prepared and open
    std::vector<Document*> open_;
    std::vector<Document*> recency_; // those that have been current, the latest last
    Document* current_ = nullptr;
    ActiveCommand* activeCommand_ = nullptr;
    Reactors reactors_;
};

} // namespace kthost
