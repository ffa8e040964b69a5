#pragma once

#include "legacy/CEattMain.h"

#include <iosfwd>
#include <memory>
#include <stdexcept>

namespace ktemplate {

/// Why some JSON is no template; what() begins with the JSON pointer of the value that does not fit, or with
/// the byte where the text stops being JSON.
class JsonRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes a template of
/// {"version": 1, "blocks": [{"name": "...", "selected": true, "attributes": [{"tag": "...", "selected":
/// true}]}]}. Nothing may be missing, added, or there twice; a tag is there once in its block. Throws
/// JsonRefusal.
std::unique_ptr<CEattMain> templateFromJson(std::istream& in);

} // namespace ktemplate
