#include "kthost/database/OwnedText.h"

#include "kthost/database/SharedText.h"

#include <memory>
#include <new>
#include <utility>

namespace kthost {

namespace {

using Outside = std::unique_ptr<wchar_t[]>;

template <class Holder>
Holder& holderIn(void* letters) {
    return *std::launder(static_cast<Holder*>(letters));
}

template <class Holder>
const Holder& holderIn(const void* letters) {
    return *std::launder(static_cast<const Holder*>(letters));
}

Outside copyOf(std::wstring_view text) {
    Outside copy(new wchar_t[text.size() + 1]);
    text.copy(copy.get(), text.size());
    copy[text.size()] = L'\0';
    return copy;
}

} // namespace

const wchar_t* OwnedText::get() const {
    if (letters_.back() == kInside) {
        return letters_.data();
    }
    return letters_.back() == kShared ? holderIn<SharedText>(letters_.data()).get()
                                      : holderIn<Outside>(letters_.data()).get();
}

void OwnedText::set(std::wstring_view text) {
    if (text.size() < kRoom) {
        std::array<wchar_t, kRoom> letters{};
        text.copy(letters.data(), text.size());
        letGo();
        letters_ = letters;
    } else if (text.size() < kWorthSharing) {
        put(copyOf(text), kOutside);
    } else {
        put(SharedText(text), kShared);
    }
}

template <class Holder>
void OwnedText::put(Holder holder, wchar_t where) {
    letGo();
    ::new (static_cast<void*>(letters_.data())) Holder(std::move(holder));
    letters_.back() = where;
}

void OwnedText::letGo() {
    if (letters_.back() == kShared) {
        std::destroy_at(&holderIn<SharedText>(letters_.data()));
    } else if (letters_.back() == kOutside) {
        std::destroy_at(&holderIn<Outside>(letters_.data()));
    }
}

} // namespace kthost
