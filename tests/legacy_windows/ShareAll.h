#pragma once

#include <WindowSystem.h>

/// The share mode of somebody who lets others do what they like with the file.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
