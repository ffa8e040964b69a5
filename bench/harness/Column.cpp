#include "bench/harness/Column.h"

namespace bench {

const char* nameOf(Column column) {
    switch (column) {
    case Column::module:
        return "this";
    case Column::literal:
        return "literal";
    case Column::limit:
        break;
    }
    return "limit";
}

} // namespace bench
