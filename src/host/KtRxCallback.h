#pragma once

class KtApDocument;

/// A plain function that one module gives another to be called back by. Its identity is its address.
using KtRxCallback = void (*)();

/// Calls another module's function. The host records the call, and refuses it with a report when the function
/// lies in a module that has been unloaded. What the function throws passes through.
void ktrxCall(KtRxCallback callback);

/// Tells the host that the calling module now holds, or no longer holds, that function for a document, so
/// that an audit can name functions of a module that has gone. Held functions are forgotten with their
/// document.
void ktrxNoteCallback(KtApDocument* document, KtRxCallback callback, bool held);
