#pragma once

#include <WindowSystem.h>

/// The resource library "KtDxNotifyRes.dll"; null while it is not loaded.
extern HMODULE gResourceInstance;
