#pragma once

#include <string>

namespace kthost {

/// The label of the record that represents a unit of a symbol in a body style: "unit 2", or "unit 2 style 2"
/// for a style other than the first.
std::wstring unitLabel(int unit, int bodyStyle = 1);

} // namespace kthost
