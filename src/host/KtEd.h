#pragma once

#include <KtArray.h>
#include <WindowSystem.h>

class KtApDocument;

/// A message filter: true keeps the message from going further.
using KtEdMessageFilter = bool (*)(MSG* message);

/// Filters are asked in the order of their registration. False for a null filter and for one that is
/// registered.
bool ktedRegisterFilterWinMsg(KtEdMessageFilter filter);
/// False for one that is not registered.
bool ktedRemoveFilterWinMsg(KtEdMessageFilter filter);

/// True while a command runs in any document.
bool ktedCommandActive();

/// A command that a module brings. `words` are those typed behind the command's name, without their quotes;
/// they stay until the function returns. It runs as any command of the host does: document locked, changes
/// kept for undo. False means that the command could not be done, for the reason given to `ktedFail`; its
/// changes are undone.
using KtEdCommandFunction = bool (*)(KtApDocument* document, const KtArray<const wchar_t*>& words);

/// `usage` is the line that `help` shows. False for a name that is taken. The texts are copied.
bool ktedAddCommand(const wchar_t* name, const wchar_t* usage, KtEdCommandFunction function);
/// False when there is no such command.
bool ktedRemoveCommand(const wchar_t* name);
/// Says why the running command cannot be done.
void ktedFail(const wchar_t* reason);
/// Prints one line to the host's console.
void ktedPrint(const wchar_t* line);
