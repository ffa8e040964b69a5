#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace kthost {

/// A text that lies inside what holds it when it is short, as most of what attributes say is; a long one is
/// shared with its equals, and one in between, such as a designator, has memory of its own. Nulls inside end
/// it, as they do for everyone who reads it through the seam.
class OwnedText {
public:
    explicit OwnedText(std::wstring_view text) { set(text); }

    OwnedText(const OwnedText&) = delete;
    OwnedText& operator=(const OwnedText&) = delete;

    ~OwnedText() { letGo(); }

    /// Stays until another is set.
    const wchar_t* get() const;
    /// The text may be this one's own.
    void set(std::wstring_view text);

private:
    static constexpr std::size_t kRoom = 24 / sizeof(wchar_t);
    static constexpr std::size_t kWorthSharing = 12;

    // Where the text is, said by the last letter: that of a short text is a null.
    static constexpr wchar_t kInside = 0;
    static constexpr wchar_t kOutside = 1;
    static constexpr wchar_t kShared = 2;

    template <class Holder>
    void put(Holder holder, wchar_t where);
    void letGo();

    alignas(void*) std::array<wchar_t, kRoom> letters_{}; // or what holds the text, and where it is
};

} // namespace kthost
