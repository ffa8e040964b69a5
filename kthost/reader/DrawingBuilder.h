#pragma once

#include "kthost/reader/Design.h"

#include <memory>
#include <string>

namespace kthost {

class Database;

/// A new drawing with all that the design holds:
///
/// - the root sheet is "*Model_Space"; "*Paper_Space" is empty;
/// - each library symbol is a record under its library id; one of several units or body styles is a dynamic
///   definition, and each unit and style in use an anonymous record that represents it, labelled by
///   unitLabel;
/// - each further sheet file is a record under its name relative to the root's folder, and each sheet that
/// names
///   it a reference to that record, with the sheet's properties as attributes;
/// - each placed symbol is a reference, with its properties and flags as attributes (see symbolAttributes)
/// and
///   what it is called in every place of the hierarchy as extended data under kKtDbOccurrences;
/// - each table is an anonymous record with one reference.
///
/// Names of records are compared without regard to case, and hold no "|": where that makes two names equal,
/// library symbols come before sheet files, each in the order of the files, and the later one gets " (2)"
/// behind its name; "|" becomes "{bar}" and a leading "*" "{star}".
///
/// Nothing of it can be undone: it is the state below the first step. User-interface thread only. Throws
/// std::runtime_error when the host fails at a step; a design that was read gives no reason for that.
std::unique_ptr<Database> buildDrawing(const Design& design, std::wstring name);

} // namespace kthost
