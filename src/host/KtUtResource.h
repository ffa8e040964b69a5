#pragma once

#include <WindowSystem.h>

/// Loads and frees modules' resource libraries.
class KtUtResource {
public:
    /// Loads a library by its bare file name from the folder of the module whose entry point is running, and
    /// from nowhere else. Null when it is not there or cannot be loaded. `language` and `flags` are 0.
    static HMODULE loadDll(const wchar_t* name, int language, int flags);
    /// False for a handle that `loadDll` did not give or that has been freed.
    static bool freeDll(HMODULE library, int flags);
};
