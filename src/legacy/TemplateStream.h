#pragma once

#include "legacy/CEattMain.h"

class ArchiveReader;
class ArchiveWriter;

/// Reads a whole template: the header into `header`, and all blocks with all their attributes, selected or
/// not, which are returned. Bytes after the last block are left unread. Throws the kinds of
/// TemplateFailure.h; `reader.place` then tells where the reading stood.
CEattBlockArray loadTemplate(ArchiveReader& reader, CEattMain& header);

/// Writes the header of `source` and its blocks. No block may be null.
void storeTemplate(ArchiveWriter& writer, CEattMain& source);
