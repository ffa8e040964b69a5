#include "kthost/runtime/CodeOrigin.h"

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
