#pragma once

#include "DocumentWatch.h"
#include "ListSource.h"
#include "Options.h"
#include "PartsTable.h"
#include "bench/workloads/Stage.h"

#include <memory>
#include <optional>

namespace bench {

/// Whoever keeps a parts list up to date in a column.
class PartsClient {
public:
    PartsClient() = default;
    PartsClient(const PartsClient&) = delete;
    PartsClient& operator=(const PartsClient&) = delete;
    virtual ~PartsClient() = default;

    /// A command has ended, and the host has been idle.
    virtual void commandEnded() = 0;
};

/// The parts list's own module, which the measured one tells of changes.
class WatchingClient final : public PartsClient {
public:
    WatchingClient(Stage& stage, const parts::Options& options);
    ~WatchingClient() override;

    void commandEnded() override {}

private:
    parts::DocumentWatch watch_;
};

/// Extracts everything after every command, and compares.
class ExtractingClient final : public PartsClient {
public:
    ExtractingClient(Stage& stage, const parts::Options& options);

    void commandEnded() override;

private:
    parts::PartsTable extract() const;

    const KtDbDatabase& database_;
    parts::Options options_;
    parts::ListSource source_;
    parts::PartsTable table_;
};

/// Keeps no list.
class NoClient final : public PartsClient {
public:
    void commandEnded() override {}
};

std::unique_ptr<PartsClient> makePartsClient(Column column, Stage& stage, const parts::Options& options);

} // namespace bench
