#include "bench/workloads/PartsClients.h"

#include "Extract.h"
#include "kthost/documents/PrintSink.h"

#include <utility>

namespace bench {

WatchingClient::WatchingClient(Stage& stage, const parts::Options& options) : watch_(stage.document()) {
    kthost::setPrintSink([](std::wstring_view) {});
    stage.enter(Column::module);
    stage.command([&] { watch_.startList(options); });
}

WatchingClient::~WatchingClient() {
    watch_.stopAll();
}

ExtractingClient::ExtractingClient(Stage& stage, const parts::Options& options)
    : database_(stage.database()),
      options_(options),
      source_(stage.database(), options),
      table_(extract()) {}

parts::PartsTable ExtractingClient::extract() const {
    return parts::extractParts(database_, {.definitions = source_.definitions(database_),
                                           .kind = options_.kind,
                                           .conditions = options_.conditions,
                                           .tags = source_.tags(),
                                           .ownTable = {}});
}

void ExtractingClient::commandEnded() {
    parts::PartsTable fresh = extract();
    if (fresh != table_) {
        table_ = std::move(fresh);
    }
}

std::unique_ptr<PartsClient> makePartsClient(Column column, Stage& stage, const parts::Options& options) {
    switch (column) {
    case Column::module:
        return std::make_unique<WatchingClient>(stage, options);
    case Column::literal:
        return std::make_unique<ExtractingClient>(stage, options);
    case Column::limit:
        break;
    }
    return std::make_unique<NoClient>();
}

} // namespace bench
