#pragma once

#include <KtDbXData.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kthost {

/// One value of extended data that owns its text.
struct XDataValue {
    KtDbXDataItem::Kind kind = KtDbXDataItem::kText;
    std::int32_t integer = 0;
    std::wstring text;

    bool operator==(const XDataValue&) const = default;
};

/// Everything that applications keep with one object.
struct XData {
    struct Application {
        std::wstring name;
        std::vector<XDataValue> values;

        bool operator==(const Application&) const = default;
    };

    std::vector<Application> applications; // an object has few

    bool operator==(const XData&) const = default;
};

} // namespace kthost
