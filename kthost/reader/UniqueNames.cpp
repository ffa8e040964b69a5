#include "kthost/reader/UniqueNames.h"

#include <algorithm>

namespace kthost {

namespace {

wchar_t foldedCase(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

} // namespace

std::wstring UniqueNames::key(std::wstring name) const {
    if (sense_ == Case::ignored) {
        std::transform(name.begin(), name.end(), name.begin(), foldedCase);
    }
    return name;
}

std::wstring UniqueNames::take(const std::wstring& wanted) {
    if (taken_.insert(key(wanted)).second) {
        return wanted;
    }
    std::size_t& latest = latest_.try_emplace(key(wanted), 1).first->second;
    std::wstring name;
    do {
        name = wanted + L" (" + std::to_wstring(++latest) + L")";
    } while (!taken_.insert(key(name)).second);
    return name;
}

// The format itself writes characters that a name cannot hold as a word in braces.
std::wstring recordNameText(const std::wstring& text) {
    std::wstring name;
    name.reserve(text.size());
    for (const wchar_t letter : text) {
        if (letter == L'|') {
            name += L"{bar}";
        } else if (letter == L'*' && name.empty()) {
            name += L"{star}";
        } else {
            name += letter;
        }
    }
    return name.empty() ? L"{empty}" : name;
}

} // namespace kthost
