#pragma once

#include <KtDbObjectId.h>

/// Walks a list of ids. Whoever was given it deletes it.
class KtDbObjectIterator {
public:
    KtDbObjectIterator() = default;
    KtDbObjectIterator(const KtDbObjectIterator&) = delete;
    KtDbObjectIterator& operator=(const KtDbObjectIterator&) = delete;
    virtual ~KtDbObjectIterator() = default;

    virtual bool done() const = 0;
    virtual void step() = 0;
    /// Null when done.
    virtual KtDbObjectId objectId() const = 0;
};
