#pragma once

#include <cstdint>

/// One value of an object's extended data. Which values follow each other is the writing application's
/// agreement.
struct KtDbXDataItem {
    enum Kind : std::uint8_t { kText, kInteger };

    Kind kind = kText;
    std::int32_t integer = 0;
    const wchar_t* text = L""; ///< the object's own text; stays until the extended data is changed
};

/// Extended data of references in a drawing whose containers are placed several times: for each occurrence
/// the path (text), the designator (text) and the unit (integer), in this order. A path is "/" for an
/// occurrence straight in model space; otherwise the handles, in hexadecimal, of the references through which
/// it comes to lie there, the outermost first, each behind a "/".
inline constexpr const wchar_t* kKtDbOccurrences = L"KT_OCCURRENCES";
