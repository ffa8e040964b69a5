#pragma once

#include "bench/contenders/Contender.h"
#include "kthost/database/Database.h"

#include <KtDbObjectId.h>

#include <cstddef>
#include <cstdint>
#include <random>

namespace bench {

/// A drawing with so many references, 4 attributes each, to 1,000 definitions in 12 layouts: the layouts are
/// filled one after the other, as a file is read, with definitions in random order (the same in every run).
/// Edits are done at once; wrap them in a command. Nothing is kept for undo.
class ReferenceDrawing {
public:
    static constexpr std::size_t kDefinitions = 1000;
    static constexpr std::size_t kContainers = 12;
    static constexpr std::size_t kAttributes = 4;

    ReferenceDrawing(kthost::Database& database, std::size_t references);

    const Ids& definitions() const { return definitions_; }

    /// Not in order once references have been replaced.
    const Ids& references() const { return references_; }

    /// Of all references that have been made.
    KtDbObjectId lastReference() const { return last_; }

    /// Sets one attribute of each of the next so many references, taken from all over the drawing.
    void edit(std::size_t count);
    /// Adds references.
    void insert(std::size_t count);
    /// Random references, taken out of `references()`, by definition.
    Ids take(std::size_t count);
    /// Erases them; they can still be restored.
    static void erase(kthost::Database& database, const Ids& references);

private:
    void defineAll();
    void insertOne(KtDbObjectId container);
    std::size_t below(std::size_t bound);

    kthost::Database& database_;
    Ids definitions_;
    Ids containers_;
    Ids references_;
    KtDbObjectId last_;
    std::size_t edits_ = 0;
    std::mt19937 random_{20'000};
};

} // namespace bench
