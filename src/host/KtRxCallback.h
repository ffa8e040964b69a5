#pragma once

#include <cstdint>

class KtApDocument;

/// A plain function that one module gives another to be called back by. Its identity is its address.
using KtRxCallback = void (*)();

/// Calls another module's function. The host records the call, and refuses it with a report when the function
/// lies in a module that has been unloaded. What the function throws passes through.
void ktrxCall(KtRxCallback callback);

/// Where a module holds functions: each is held once in a list, however often it was attached.
enum class KtRxCallbackList : std::uint8_t { idleTimer, blockReferences };

/// Tells the host that the calling module now holds, or no longer holds, that function for a document, so
/// that an audit can name functions of a module that has gone. Never fails.
void ktrxNoteCallback(KtApDocument* document, KtRxCallbackList list, KtRxCallback callback, bool held);
/// Tells the host that nothing is held for the document any more.
void ktrxForgetCallbacks(KtApDocument* document);
