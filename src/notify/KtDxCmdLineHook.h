#pragma once

#include <WindowSystem.h>

#include "notify/KtDxEnableBase.h"

/// Receives the idle-check message. Enabled means that `idleCheckFilter` is registered with the host.
class KtDxCmdLineHook : public KtDxEnableBase {
public:
    KtDxCmdLineHook() = default;
    ~KtDxCmdLineHook() override;

    /// eFilterRefused, and the state as it was, when the host will not register or remove the filter.
    Orbx::ErrorStatus setEnabled(bool enable) override;
};

/// Message filter: consumes the idle-check message and, if the document that it was posted for is current and
/// idle, runs that document's timers. True for the idle-check message, whatever came of it; every other
/// message passes.
bool idleCheckFilter(MSG* message);
