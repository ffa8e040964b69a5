#pragma once

#include "CallbackSlot.h"
#include "DocumentTimer.h"
#include "DrawnTable.h"
#include "Extract.h"
#include "InUse.h"
#include "ListSource.h"
#include "Options.h"
#include "PartsTable.h"
#include "ReadReferences.h"
#include "TableDiff.h"
#include "TouchListener.h"

#include <optional>
#include <string>
#include <vector>

class KtApDocument;

namespace parts {

/// A parts list that follows one document. It is extracted again whenever KtDxNotify calls, and whenever an
/// idle check finds that the drawing has other definitions than before (a definition that is new, with the
/// first reference to it, changes none of those that were there to be watched) or that something has been
/// touched and KtDxNotify did not call: then it may not have heard it, and is made to look. References that
/// nobody has touched are then listed as they were read before.
///
/// A list is of one moment and whole. While somebody has open for writing what would have to be read, the
/// list, the file and the table in the drawing stay as they were, and people are told what is in the way; the
/// idle check that finds it out of the way has everything extracted again. The same holds for the table alone
/// while that cannot be written. What nobody has touched since it was read need not be read.
class PartsList {
public:
    /// Extracts, draws and writes the list for the first time, as part of the running command, and begins to
    /// watch. Throws Refusal, and then watches nothing. The timer must outlive it.
    PartsList(KtApDocument& document, DocumentTimer& timer, const Options& options);
    PartsList(const PartsList&) = delete;
    PartsList& operator=(const PartsList&) = delete;
    ~PartsList() = default;

    /// Watches no longer. What was written and drawn stays.
    void stop();
    /// The document is going, and KtDxNotify's record of it may have gone. To detach from the timer would
    /// make a new record for it, so that is left out: the timer goes with the document.
    void stopWithDocument();

    const PartsTable& table() const { return table_; }

    /// What the list has to wait for before it can follow the drawing again; null when it is not behind.
    const InUse* obstacle() const { return unread_ ? &*unread_ : nullptr; }

    /// Extracts afresh and compares with the list, the file and the table in the drawing. Throws Refusal with
    /// what differs.
    void check() const;

private:
    void attach();
    void listen();
    void publish();
    void drawOrReport();
    void writeFile() const;
    void drawTable();
    void checkFile() const;
    Selection selection() const;
    PartsTable extract();
    void forgetTouched();
    /// Extracts and publishes. Without `always` only if something has changed.
    void refresh(bool always);
    void take(PartsTable fresh);
    bool hasOtherDefinitions() const;
    void blocksChanged();
    void idle();
    void follow();
    void waitFor(const InUse& obstacle, std::optional<InUse>& place) const;
    void print(const std::wstring& text) const;

    KtApDocument& document_;
    DocumentTimer& timer_;
    Options options_;
    ListSource source_;
    std::vector<KtDbObjectId> knownRecords_; // the whole block table as it was last seen
    std::optional<DrawnTable> drawn_;        // before the first extraction, which leaves it out
    ReferenceReader reader_;                 // before the first extraction, too
    bool isReadHeard_ = false;               // the listener hears all that the reader knows
    PartsTable table_;
    bool toldOfLoss_ = false;      // that the table in the drawing is gone
    std::optional<InUse> unread_;  // what kept the drawing from being read
    std::optional<InUse> undrawn_; // what kept the list from being drawn
    TouchListener listener_;
    CallbackSlot changedSlot_;
    CallbackSlot idleSlot_;
};

} // namespace parts
