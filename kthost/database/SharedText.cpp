#include "kthost/database/SharedText.h"

#include <functional>
#include <unordered_map>

namespace kthost {

namespace {

/// Lets a text be looked for without being copied.
struct TextHash {
    using is_transparent = void;

    std::size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
};

using Texts = std::unordered_map<std::wstring, std::size_t, TextHash, std::equal_to<>>;

Texts& texts() {
    static auto& all = *new Texts; // never destroyed: a drawing may outlive every static
    return all;
}

} // namespace

SharedText::SharedText(std::wstring_view text) {
    const auto present = texts().find(text);
    entry_ = present != texts().end() ? &*present : &*texts().emplace(text, 0).first;
    ++entry_->second;
}

SharedText::~SharedText() {
    if (entry_ != nullptr && --entry_->second == 0) {
        texts().erase(texts().find(entry_->first));
    }
}

} // namespace kthost
