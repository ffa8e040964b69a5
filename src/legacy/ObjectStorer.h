#pragma once

#include "legacy/CObject.h"

class ArchiveWriter;

/// Writes objects of one class, each with its class information: the first one describes the class, the
/// others name it by its index. One storer writes all objects of a stream.
class ObjectStorer {
public:
    explicit ObjectStorer(ArchiveWriter& writer) : writer_(&writer) {}

    void store(CObject& object);

private:
    void storeClassDescription(const CRuntimeClass& described);

    ArchiveWriter* writer_;
    bool described_ = false;
};
