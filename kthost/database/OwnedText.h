#pragma once

#include <memory>
#include <string_view>

namespace kthost {

/// An immutable text in one word: drawings hold millions of attributes. Nulls inside end it, as they do for
/// everyone who reads it through the seam.
class OwnedText {
public:
    OwnedText() = default;
    explicit OwnedText(std::wstring_view text);

    const wchar_t* get() const { return text_ == nullptr ? L"" : text_.get(); }

private:
    std::unique_ptr<wchar_t[]> text_; // null for the empty text
};

/// The one copy in this process of a text that many objects share and that has few different values. It
/// stays.
const wchar_t* sharedText(std::wstring_view text);

} // namespace kthost
