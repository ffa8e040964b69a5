#pragma once

namespace ktemplate {

/// Whether what goes to standard error is read by a person.
bool standardErrorIsTerminal();

} // namespace ktemplate
