#pragma once

#include <string>

/// Whether the attribute of a tag is to be extracted. The tag itself is the key of the map that owns the
/// entry.
struct AttributeEntry {
    bool m_bSelected = false;
    std::wstring m_strFirst;  ///< never stored
    std::wstring m_strSecond; ///< never stored
};
