#include "bench/contenders/Contender.h"
#include "bench/contenders/LimitContender.h"
#include "bench/contenders/LiteralContender.h"
#include "bench/contenders/ModuleContender.h"

namespace bench {

std::unique_ptr<Contender> makeContender(Column column, kthost::Document& document) {
    switch (column) {
    case Column::module:
        return std::make_unique<ModuleContender>(document);
    case Column::literal:
        return std::make_unique<LiteralContender>(document);
    case Column::limit:
        break;
    }
    return std::make_unique<LimitContender>(document);
}

} // namespace bench
