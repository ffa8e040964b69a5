#include "kthost/database/OwnedText.h"

#include <string>
#include <unordered_set>

namespace kthost {

OwnedText::OwnedText(std::wstring_view text) {
    if (!text.empty()) {
        text_.reset(new wchar_t[text.size() + 1]);
        text.copy(text_.get(), text.size());
        text_[text.size()] = L'\0';
    }
}

const wchar_t* sharedText(std::wstring_view text) {
    static std::unordered_set<std::wstring> texts;
    return texts.emplace(text).first->c_str();
}

} // namespace kthost
