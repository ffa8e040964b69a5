#include <UserLocale.h>

#include "kthost/window/windows/SystemLocale.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <locale>
#include <string>

namespace {

constexpr int kLongestCharacter = 8; // in bytes; no code page has one as long

/// One of the system's code pages for 8-bit text.
class SystemEncoding : public std::codecvt<wchar_t, char, std::mbstate_t> {
public:
    explicit SystemEncoding(UINT codePage) : codePage_(codePage) {}

protected:
    result do_in(state_type& /*state*/, const extern_type* from, const extern_type* fromEnd,
                 const extern_type*& fromNext, intern_type* to, intern_type* toEnd,
                 intern_type*& toNext) const override {
        fromNext = from;
        toNext = to;
        while (fromNext != fromEnd) {
            intern_type character[2];
            int units = 0;
            const int length = decode(fromNext, fromEnd, character, units);
            if (length == 0) {
                return error;
            }
            if (toEnd - toNext < units) {
                return partial;
            }
            toNext = std::copy_n(character, units, toNext);
            fromNext += length;
        }
        return ok;
    }

    int do_encoding() const noexcept override { return 0; }

    int do_max_length() const noexcept override { return kLongestCharacter; }

    bool do_always_noconv() const noexcept override { return false; }

private:
    /// The number of bytes of the first character, which is written to `character`; 0 when there is none.
    int decode(const char* from, const char* fromEnd, wchar_t (&character)[2], int& units) const {
        for (int length = 1; length <= kLongestCharacter && length <= fromEnd - from; ++length) {
            units = MultiByteToWideChar(codePage_, MB_ERR_INVALID_CHARS, from, length, character, 2);
            if (units > 0) {
                return length;
            }
        }
        return 0;
    }

    UINT codePage_;
};

/// The user's order of texts.
class SystemOrder : public std::collate<wchar_t> {
protected:
    int do_compare(const wchar_t* left, const wchar_t* leftEnd, const wchar_t* right,
                   const wchar_t* rightEnd) const override {
        const int order = CompareStringEx(LOCALE_NAME_USER_DEFAULT, 0, left, static_cast<int>(leftEnd - left),
                                          right, static_cast<int>(rightEnd - right), nullptr, nullptr, 0);
        return order - CSTR_EQUAL;
    }

    /// Each byte of the system's key as a character of its own.
    string_type do_transform(const wchar_t* text, const wchar_t* end) const override {
        const std::string key = keyOf(text, static_cast<int>(end - text));
        string_type wide;
        wide.reserve(key.size());
        for (const char byte : key) {
            wide += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        }
        return wide;
    }

private:
    static std::string keyOf(const wchar_t* text, int length) {
        std::string key;
        if (length > 0) {
            key.resize(static_cast<std::size_t>(map(LCMAP_SORTKEY, text, length, nullptr, 0)));
            // For a key the room is counted in bytes, whatever the parameter's type says.
            map(LCMAP_SORTKEY, text, length, reinterpret_cast<wchar_t*>(key.data()),
                static_cast<int>(key.size()));
        }
        return key;
    }

    static int map(DWORD how, const wchar_t* text, int length, wchar_t* to, int room) {
        return LCMapStringEx(LOCALE_NAME_USER_DEFAULT, how, text, length, to, room, nullptr, nullptr, 0);
    }
};

/// Letters in lower case; what kind of character it is stays with the classic locale.
class SystemLetters : public std::ctype<wchar_t> {
protected:
    wchar_t do_tolower(wchar_t character) const override {
        do_tolower(&character, &character + 1);
        return character;
    }

    const wchar_t* do_tolower(wchar_t* text, const wchar_t* end) const override {
        const auto length = static_cast<int>(end - text);
        if (length > 0) {
            LCMapStringEx(LOCALE_NAME_USER_DEFAULT, LCMAP_LOWERCASE, text, length, text, length, nullptr,
                          nullptr, 0);
        }
        return end;
    }
};

} // namespace

namespace kthost {

std::locale systemLocale(UINT codePage) {
    const std::locale ordered(std::locale::classic(), new SystemOrder);
    const std::locale lettered(ordered, new SystemLetters);
    return {lettered, new SystemEncoding(codePage)};
}

} // namespace kthost

const std::locale& userLocale() {
    static const std::locale kUserLocale = kthost::systemLocale(CP_ACP);
    return kUserLocale;
}
