#pragma once

#include <string>
#include <vector>

/// What `list` shows: rows of cells (UTF-8), the columns' names first, in an order that does not change from
/// run to run. A name, where it is not empty, limits the rows. Each throws CommandError when that names
/// nothing.
namespace kthost {

class Session;

using ListRows = std::vector<std::vector<std::string>>;

/// Blocks in the order of the block table; the name is that of one block.
ListRows listBlocks(Session& session, const std::wstring& name);
/// References by handle; the name is that of the block that they place. Those of an attached drawing are
/// listed by their block only, and without a handle: that is the attached drawing's own.
ListRows listReferences(Session& session, const std::wstring& name);
ListRows listLayouts(Session& session, const std::wstring& name);
/// Attributes by reference; the name is that of one reference.
ListRows listAttributes(Session& session, const std::wstring& name);
/// Table entities by handle; the name is their "Name" attribute.
ListRows listTables(Session& session, const std::wstring& name);
/// Open documents in the order of their opening.
ListRows listDocuments(Session& session, const std::wstring& name);
/// Modules in the order of their loading.
ListRows listModules(Session& session, const std::wstring& name);

} // namespace kthost
