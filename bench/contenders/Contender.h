#pragma once

#include "bench/harness/Column.h"
#include "kthost/documents/Document.h"

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxCallback.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace bench {

using Ids = std::vector<KtDbObjectId>;

/// What the next idle check will find. Only the limit, which keeps no books, has to be told.
struct Expected {
    KtDbObjectId lastKnown; ///< references with greater ids are new
    Ids gone;               ///< references that have been released, by definition
};

/// Whoever does the work in a column, driven as a client would drive it: through calls like the module's
/// exports, and by the host at the end of commands and at idle checks. Made when the document is open, and
/// destroyed before the host ends.
class Contender {
public:
    Contender() = default;
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;
    virtual ~Contender() = default;

    /// The drawing is as the next call will find it. Not to be timed.
    virtual void prepare() {}

    virtual void expect(const Expected& /*expected*/) {}

    virtual bool attach(const KtArray<KtDbObjectId>& definitions, KtRxCallback callback) = 0;
    virtual bool update(bool force, bool notify) = 0;
    virtual bool attachTimer(KtRxCallback callback) = 0;

    /// Marks definitions as changed, as an edit of one of their references does.
    virtual void markChanged(const Ids& definitions) = 0;
    virtual void propagate() = 0;
    /// Clears all marks.
    virtual void forgetChanges() = 0;
    /// The sum over the definitions, counted recursively, in model space or in all layouts.
    virtual std::uint64_t countInstances(const Ids& definitions, bool modelSpaceOnly) = 0;

    /// Appends the records of the drawing's tables, and the tables.
    virtual bool appendTables(KtArray<KtDbObjectId>& records, KtArray<KtDbObjectId>& tables) = 0;
};

std::unique_ptr<Contender> makeContender(Column column, kthost::Document& document);

} // namespace bench
