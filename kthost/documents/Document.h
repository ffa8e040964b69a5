#pragma once

#include <KtApDocument.h>

#include "kthost/database/Database.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kthost {

/// Whose lock it is. Only locks of the calling execution context count unless others are asked for.
enum class LockContext : std::uint8_t { own, other };

/// One open drawing, or a document without one. Made and destroyed by the DocumentManager.
class Document final : public KtApDocument {
public:
    /// `database` may be null.
    Document(std::wstring name, std::unique_ptr<Database> database);
    ~Document() override;

    const wchar_t* name() const override { return name_.c_str(); }

    Database* database() const override { return database_.get(); }

    bool isQuiescent() const override { return !commandActive_ && !dialogOpen_; }

    KtAp::DocLockMode lockMode(bool includeOtherContexts = false) const override;

    /// A script or a dialog of the document is under way.
    void setDialogOpen(bool open) { dialogOpen_ = open; }

    /// Number of inputs waiting to be taken by the document's commands.
    void setPendingInputCount(int count) { pendingInputCount_ = count; }

    int pendingInputCount() const { return pendingInputCount_; }

private:
    friend class DocumentManager;

    struct Lock {
        KtAp::DocLockMode mode;
        LockContext context;
    };

    static KtAp::DocLockMode strongest(const std::vector<Lock>& locks, bool includeOtherContexts);

    std::wstring name_;
    std::unique_ptr<Database> database_;
    std::vector<Lock> locks_; // oldest first
    int pendingInputCount_ = 0;
    bool commandActive_ = false;
    bool dialogOpen_ = false;
};

} // namespace kthost
