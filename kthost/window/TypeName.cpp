#include "kthost/window/TypeName.h"

// Compilers with this header have mangled names in their run-time types, the others plain ones.
#if __has_include(<cxxabi.h>)

#include <cxxabi.h>

#include <cstdlib>
#include <memory>

namespace kthost {

std::string readableTypeName(const std::type_info& type) {
    struct Release {
        void operator()(char* text) const { std::free(text); } // the demangler allocates with malloc
    };

    int status = 0;
    const std::unique_ptr<char, Release> text(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status));
    return status == 0 ? text.get() : type.name();
}

} // namespace kthost

#else

namespace kthost {

std::string readableTypeName(const std::type_info& type) {
    return type.name();
}

} // namespace kthost

#endif
