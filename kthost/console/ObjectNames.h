#pragma once

#include <KtDbObjectId.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How people name what is in a drawing, and how it is named to them.
namespace kthost {

class Database;

/// "0x2A": hexadecimal with a mark in front, since C1 and D10 are designators.
std::string handleText(std::uint64_t handle);
/// Nothing for a text that is no handle.
std::optional<std::uint64_t> parseHandle(std::wstring_view text);

/// Text of the first living attribute with that tag; empty when there is none.
std::wstring_view attributeText(KtDbObjectId reference, std::wstring_view tag);

/// The name of what a reference places: that of the dynamic definition for a representation.
std::string blockName(KtDbObjectId reference);

/// Handle and designator: "0x2A R7".
std::string referenceText(KtDbObjectId reference);

/// Living references of the drawing whose designator does not begin with "#", by handle: the parts that a
/// word like @1 counts.
std::vector<KtDbObjectId> partsOf(const Database& database);

/// Erased references that can still be restored and whose Reference attribute has that text, by handle.
std::vector<KtDbObjectId> erasedByDesignator(const Database& database, std::wstring_view designator);

/// Living references of the drawing itself, by handle.
std::vector<KtDbObjectId> allReferences(const Database& database);

} // namespace kthost
