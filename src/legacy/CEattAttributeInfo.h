#pragma once

#include "legacy/CObject.h"

#include <memory>
#include <vector>

/// What a block can hold beside its attribute entries. This module never makes one.
class CEattAttributeInfo : public CObject {};

using CEattAttributeArray = std::vector<std::unique_ptr<CEattAttributeInfo>>;
