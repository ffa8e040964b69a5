#pragma once

#include "kthost/database/Database.h"
#include "kthost/database/ExternalReferences.h"

#include <memory>

namespace kthost {

/// One reading of an attached drawing, and how to read it again.
struct ExternalDrawing {
    DrawingLoader loader;
    std::unique_ptr<Database> database;
};

} // namespace kthost
