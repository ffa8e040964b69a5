#pragma once

#include "legacy/CObject.h"

#include <string>
#include <vector>

/// Sorts the tags of a block before they are stored.
class CEattUtil : public CObject {
public:
    /// Ascending by the user's locale, without regard to case, in place. Always true. Strings that compare
    /// equal come out in an order that is fixed, and need not be the one in which they came.
    bool SortStringArray(std::vector<std::wstring>& strings);
};
