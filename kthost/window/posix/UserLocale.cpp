#include <UserLocale.h>

#include <stdexcept>

namespace {

std::locale findUserLocale() {
    try {
        return std::locale("");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

} // namespace

const std::locale& userLocale() {
    static const std::locale kUserLocale = findUserLocale();
    return kUserLocale;
}
