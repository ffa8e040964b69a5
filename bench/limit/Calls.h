#pragma once

#include "bench/limit/Prepared.h"
#include "bench/limit/Watcher.h"

#include <KtArray.h>
#include <KtDbObjectId.h>

#include <cstddef>
#include <deque>
#include <vector>

class KtApDocument;

namespace bench::limit {

/// The calls about a drawing's blocks that cannot be avoided, in their order. Nothing is recorded but what
/// the calls themselves need: lists that a monitor would have recorded are prepared beforehand.
class Calls {
public:
    explicit Calls(KtApDocument& document) : document_(document) {}

    void prepare(const kthost::Database& database);
    void expect(KtDbObjectId lastKnown, std::vector<Gone> gone);

    /// Making the monitor, which scans for the first time.
    void create();
    /// Scanning again, and attaching to everything.
    void enable();
    /// Looking at all references again; gives whether clients have to be called.
    bool update();
    /// All that asking for the instances of every definition asks the host.
    void countInstances(bool modelSpaceOnly) const;

    bool isRescanNeeded() const { return marks_.rescanNeeded; }

private:
    void scan(bool first);
    void scanRecord(const KtDbBlockTableRecord& record, Watcher& watcher, bool first);
    void refresh(KtDbObjectId id, Watcher& watcher);
    void visit(KtDbObjectId reference, Watcher& watcher);
    void attachReference(KtDbObjectId reference, Watcher& watcher) const;
    void attachAttribute(KtDbObjectId attribute, Watcher& watcher) const;
    void letGoOfGone(KtDbObjectId record);
    void countInContainer(const PreparedRecord& record, KtDbObjectId container) const;

    KtApDocument& document_;
    Marks marks_;
    TableWatcher tableWatcher_{marks_};
    std::deque<Watcher> watchers_; // one a record, in table order
    std::vector<PreparedRecord> records_;
    std::vector<KtDbObjectId> layouts_;
    bool enabled_ = false;
    KtDbObjectId modelSpace_;
    KtDbObjectId lastKnown_;
    std::vector<Gone> gone_;
    std::size_t nextGone_ = 0;
    KtArray<KtDbObjectId> ids_{0, 8}; // asked for again and again
};

} // namespace bench::limit
