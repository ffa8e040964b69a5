#pragma once

namespace ktmodel {

inline constexpr int kDone = 0;
inline constexpr int kInvalidBlock = 16;
inline constexpr int kAlreadyMonitored = 260;
inline constexpr int kMissing = 506;

} // namespace ktmodel
