#include "kthost/reader/UnitLabel.h"

namespace kthost {

std::wstring unitLabel(int unit, int bodyStyle) {
    std::wstring label = L"unit " + std::to_wstring(unit);
    if (bodyStyle != 1) {
        label += L" style " + std::to_wstring(bodyStyle);
    }
    return label;
}

} // namespace kthost
