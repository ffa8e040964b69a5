#include "kthost/database/Attribute.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"

namespace kthost {

Orbx::ErrorStatus Attribute::setText(std::wstring_view text) {
    const Orbx::ErrorStatus status = beginStateChange(objectId());
    if (status == Orbx::eOk) {
        text_.set(text);
        keepFindable();
    }
    return status;
}

ObjectState Attribute::state() const {
    return AttributeState{text_.get()};
}

void Attribute::exchangeState(ObjectState& state) {
    std::wstring& other = std::get<AttributeState>(state).text;
    std::wstring present = text_.get();
    text_.set(other);
    other = std::move(present);
    keepFindable();
}

void Attribute::keepFindable() const {
    if (DatabaseContents* contents = contentsOf(objectId())) {
        contents->designators.note(objectId(), tag(), text());
    }
}

} // namespace kthost
