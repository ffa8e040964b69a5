#pragma once

#include "bench/contenders/Contender.h"
#include "kthost/documents/Host.h"

#include <functional>
#include <memory>

namespace bench {

/// A client that looks at nothing.
inline void called() {}

/// A host with one document, and whoever does the work in it. Made in two steps, so that the drawing is there
/// when the contender comes.
class Stage {
public:
    /// With an empty drawing.
    Stage();
    explicit Stage(std::unique_ptr<kthost::Database> drawing);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    void enter(Column column) { contender_ = makeContender(column, document_); }

    Contender& contender() { return *contender_; }

    kthost::Document& document() { return document_; }

    kthost::Database& database() { return *document_.database(); }

    /// A command of the host's, without the idle check behind it.
    void run(const std::function<void()>& edit);
    /// Lets the host come to what waits, idle checks included.
    void idle();
    /// Both.
    void command(const std::function<void()>& edit);

private:
    kthost::Host host_;
    kthost::Document& document_;
    std::unique_ptr<Contender> contender_;
};

} // namespace bench
