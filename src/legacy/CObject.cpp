#include "legacy/CObject.h"

#include <ostream>

namespace {

constexpr std::uint16_t kNotSerialisable = 0xFFFF;

} // namespace

const CRuntimeClass CObject::kClass{"CObject", kNotSerialisable, nullptr};

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return &kClass;
}

void CObject::Serialize(CArchive& /*archive*/) {}

void CObject::AssertValid() const {}

void CObject::Dump(std::ostream& out) const {
    out << "a " << GetRuntimeClass()->m_lpszClassName << '\n';
}
