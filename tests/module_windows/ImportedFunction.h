#pragma once

#include <WindowSystem.h>

#include <cstdint>
#include <string>

/// The address that a library in memory calls for a function of the system's; 0 when it calls none of that
/// name.
std::uintptr_t importedFunction(HMODULE library, const std::string& name);

/// The address of the system's own function, whatever anybody's import table says.
std::uintptr_t systemFunction(const wchar_t* library, const char* name);
