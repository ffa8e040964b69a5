#pragma once

#include "legacy/ArchiveIndexTable.h"
#include "legacy/CObject.h"

#include <memory>

class ArchiveReader;

/// Reads objects of one class, each with its class information, from an archive stream. One loader reads all
/// objects of a stream, since later ones name the class by the index that an earlier one gave it.
class ObjectLoader {
public:
    /// `known` is the only class that is not refused. Both outlive the loader.
    ObjectLoader(ArchiveReader& reader, const CRuntimeClass& known) : reader_(&reader), known_(&known) {}

    /// A new object of the known class, which has read itself. Never null: a null reference and a reference
    /// back to an earlier object are refused as a bad index. Throws ArchiveFailure.
    std::unique_ptr<CObject> load();
    /// As far as to the object's own fields, which are the caller's to read. Throws ArchiveFailure.
    void begin();

private:
    void loadClass();
    void loadClassDescription();

    ArchiveReader* reader_;
    const CRuntimeClass* known_;
    ArchiveIndexTable indices_;
};
