#pragma once

#include "kthost/documents/Document.h"
#include "tests/model/Snapshot.h"

#include <random>
#include <vector>

namespace histories {

/// Pairs of records at random, other ones every time, but the same ones in the same history.
class Questions {
public:
    /// A few, about records and layouts of the document's drawing.
    std::vector<ktmodel::GraphQuestion> about(const kthost::Document& document);

private:
    std::minstd_rand random_;
};

} // namespace histories
