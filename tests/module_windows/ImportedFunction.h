#pragma once

#include <WindowSystem.h>

#include <string>

/// The address that a library in memory calls for a function of the system's; null when it calls none of that
/// name.
const void* importedFunction(HMODULE library, const std::string& name);

/// The address of the system's own function, whatever anybody's import table says.
const void* systemFunction(const wchar_t* library, const char* name);
