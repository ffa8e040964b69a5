#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace kthost {

/// An immutable text in one word, of which the process has one copy however many objects hold it: the names
/// of attributes, and what many attributes say. Nulls inside end it, as they do for everyone who reads it
/// through the seam.
class SharedText {
public:
    explicit SharedText(std::wstring_view text);

    SharedText(SharedText&& other) noexcept : entry_(std::exchange(other.entry_, nullptr)) {}

    SharedText& operator=(SharedText&& other) noexcept {
        std::swap(entry_, other.entry_);
        return *this;
    }

    SharedText(const SharedText&) = delete;
    SharedText& operator=(const SharedText&) = delete;
    ~SharedText();

    const wchar_t* get() const { return entry_->first.c_str(); }

private:
    using Entry = std::pair<const std::wstring, std::size_t>; // the text, and how many hold it

    Entry* entry_; // null only once moved from
};

} // namespace kthost
