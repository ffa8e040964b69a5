#include "kthost/documents/DocumentManager.h"

#include "kthost/audit/Trace.h"
#include "kthost/database/UndoHistory.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/Utf8.h"

#include <cstddef>
#include <exception>
#include <string>
#include <utility>

namespace kthost {

struct DocumentManager::ActiveCommand {
    std::string name;
    std::string reason; // what the command itself gave
};

/// Makes a command the active one from its beginning to its end.
class DocumentManager::CommandScope {
public:
    CommandScope(DocumentManager& manager, Document& document, ActiveCommand& command)
        : manager_(manager),
          document_(document) {
        manager_.activeCommand_ = &command;
        document_.commandActive_ = true;
    }

    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    ~CommandScope() {
        document_.commandActive_ = false;
        manager_.activeCommand_ = nullptr;
    }

private:
    DocumentManager& manager_;
    Document& document_;
};

/// Gives back what a command has locked if a reactor's exception cuts its announcements short.
class DocumentManager::LocksRestored {
public:
    explicit LocksRestored(Document& document)
        : document_(document),
          count_(static_cast<std::ptrdiff_t>(document.locks_.size())) {}

    LocksRestored(const LocksRestored&) = delete;
    LocksRestored& operator=(const LocksRestored&) = delete;

    ~LocksRestored() { document_.locks_.erase(document_.locks_.begin() + count_, document_.locks_.end()); }

private:
    Document& document_;
    std::ptrdiff_t count_;
};

namespace {

const char* textOf(CommandResult result) {
    switch (result) {
    case CommandResult::done:
        return "done";
    case CommandResult::failed:
        return "failed";
    case CommandResult::cancelled:
        break;
    }
    return "cancelled";
}

void traceBegin(const Document& document, const std::wstring& name) {
    if (tracing()) {
        TraceLine("command begin").field("document", document.name()).field("command", name);
    }
}

void traceEnd(const Document& document, const std::wstring& name, const CommandOutcome& outcome) {
    if (tracing()) {
        TraceLine("command end")
            .field("document", document.name())
            .field("command", name)
            .field("result", textOf(outcome.result))
            .field("reason", outcome.reason);
    }
}

CommandOutcome callCommand(Document& document, const DocumentManager::CommandFunction& function) {
    try {
        return {function(document), {}};
    } catch (const std::exception& thrown) {
        return {CommandResult::failed, thrown.what()};
    } catch (...) {
        return {CommandResult::failed, "it threw something that is no std::exception"};
    }
}

void giveReason(CommandOutcome& outcome, const std::string& reason) {
    if (outcome.result != CommandResult::failed) {
        return;
    }
    if (!reason.empty()) {
        outcome.reason = reason;
    }
    if (outcome.reason.empty()) {
        outcome.reason = "it gave no reason";
    }
}

UndoHistory* historyOf(Document& document, CommandUndo undo) {
    const bool keeps = undo == CommandUndo::step && document.database() != nullptr;
    return keeps ? &document.database()->history() : nullptr;
}

void endStep(UndoHistory& history, CommandOutcome& outcome) {
    const Orbx::ErrorStatus status = outcome.result == CommandResult::done ? history.end() : history.cancel();
    if (status != Orbx::eOk) {
        outcome.reason += outcome.reason.empty() ? "" : "; ";
        outcome.reason += "its changes could not be taken back (status " + std::to_string(status) +
                          "): an object is still open";
        outcome.result = CommandResult::failed;
    }
}

} // namespace

CommandOutcome DocumentManager::runCommand(Document& document, const std::wstring& name,
                                           const CommandFunction& function, CommandUndo undo) {
    if (activeCommand_ != nullptr) {
        return {CommandResult::failed,
                toUtf8(name) + " cannot be run while the command " + activeCommand_->name + " is running"};
    }
    traceBegin(document, name);
    const LocksRestored locks(document);
    CommandOutcome outcome;
    {
        ActiveCommand command{toUtf8(name), {}};
        const CommandScope scope(*this, document, command);
        lock(document, KtAp::kWrite, name);
        outcome = perform(document, command, function, undo);
    }
    unlock(document, L"#" + name);
    traceEnd(document, name, outcome);
    return outcome;
}

CommandOutcome DocumentManager::perform(Document& document, const ActiveCommand& command,
                                        const CommandFunction& function, CommandUndo undo) {
    const ModuleCodeScope scope(ModuleCodeKind::command, command.name);
    UndoHistory* history = historyOf(document, undo);
    if (history != nullptr) {
        history->begin(toWide(command.name));
    }
    CommandOutcome outcome = callCommand(document, function);
    giveReason(outcome, command.reason);
    if (history != nullptr) {
        endStep(*history, outcome);
    }
    return outcome;
}

void DocumentManager::failCommand(std::string reason) {
    if (activeCommand_ != nullptr) {
        activeCommand_->reason = std::move(reason);
    }
}

} // namespace kthost
