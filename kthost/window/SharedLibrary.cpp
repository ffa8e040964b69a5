#include "kthost/window/SharedLibrary.h"

#include <utility>

namespace kthost {

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}

SharedLibrary::~SharedLibrary() {
    close();
}

} // namespace kthost
