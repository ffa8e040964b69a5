#pragma once

#include <stdexcept>

namespace kthost {

/// Why a command line cannot be done (UTF-8, as people are to read it). Nothing has been changed then.
class CommandError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The line is not what the command takes.
class UsageError : public CommandError {
public:
    using CommandError::CommandError;
};

} // namespace kthost
