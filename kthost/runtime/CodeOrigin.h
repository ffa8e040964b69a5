#pragma once

#include "kthost/window/TypeName.h"

#include <cstring>
#include <string>
#include <typeinfo>

namespace kthost {

/// Where a listener's code lies, taken down when it registers: by the time of an audit the listener itself
/// may be gone and must not be touched.
struct CodeOrigin {
    const void* code = nullptr;
    std::string className; ///< empty for plain functions
};

/// Address of an object's table of virtual functions; it lies in the module that the object's class does.
inline const void* virtualTableOf(const void* object) {
    const void* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return table;
}

/// For an object of a class with virtual functions.
template <typename T>
CodeOrigin originOfObject(const T* object) {
    return {virtualTableOf(dynamic_cast<const void*>(object)), readableTypeName(typeid(*object))};
}

template <typename Result, typename... Arguments>
const void* addressOfFunction(Result (*function)(Arguments...)) {
    const void* address = nullptr;
    static_assert(sizeof address == sizeof function);
    std::memcpy(&address, &function, sizeof address);
    return address;
}

} // namespace kthost
