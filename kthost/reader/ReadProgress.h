#pragma once

#include <cstdint>

namespace kthost {

/// Told how far reading a drawing has come. `total` grows when a sheet names a file that was not known yet;
/// `done` never exceeds it, never falls, and reaches it when all is read. Called on the reading thread, at
/// most once for each 64 KiB and file. What the function throws ends the reading and reaches its caller.
class ReadProgress {
public:
    virtual ~ReadProgress() = default;

    virtual void bytesRead(std::uint64_t done, std::uint64_t total) = 0;

protected:
    ReadProgress() = default;
    ReadProgress(const ReadProgress&) = default;
    ReadProgress& operator=(const ReadProgress&) = default;
};

} // namespace kthost
