#pragma once

#include "kthost/database/DatabaseObject.h"
#include "kthost/database/ObjectState.h"
#include "kthost/database/OwnedText.h"
#include "kthost/database/SharedText.h"

#include <KtDbAttribute.h>

#include <string_view>

namespace kthost {

class Attribute final : public DatabaseObject<KtDbAttribute> {
public:
    Attribute(std::wstring_view tag, std::wstring_view text) : tag_(tag), text_(text) {}

    const wchar_t* tag() const override { return tag_.get(); }

    const wchar_t* text() const override { return text_.get(); }

    /// Has to be open for write.
    Orbx::ErrorStatus setText(std::wstring_view text);

    ObjectState state() const;
    void exchangeState(ObjectState& state);

private:
    void keepFindable() const;

    const SharedText tag_; // a drawing has few different ones
    OwnedText text_;
};

} // namespace kthost
