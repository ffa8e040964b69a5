#include "InUse.h"

#include "OpenObject.h"
#include "PlacedReference.h"

#include <string>

namespace parts {

namespace {

/// For notification it can be opened whoever else has it open.
std::wstring nameOf(KtDbObjectId id) {
    const OpenObject<KtDbObject> object(id, KtDb::kForNotify, true);
    return object ? L"0x" + handleText(object->handle()) : L"an object";
}

std::wstring describe(KtDbObjectId object, KtDb::OpenMode mode) {
    const wchar_t* what =
        mode == KtDb::kForRead ? L"the list cannot be read from the drawing" : L"the table cannot be drawn";
    return what + (L" while " + nameOf(object) + L" is open elsewhere");
}

} // namespace

bool isInUse(Orbx::ErrorStatus status) {
    return status == Orbx::eWasOpenForRead || status == Orbx::eWasOpenForWrite ||
           status == Orbx::eWasOpenForNotify || status == Orbx::eTooManyReaders;
}

InUse::InUse(KtDbObjectId object, KtDb::OpenMode mode)
    : Refusal(describe(object, mode)),
      object_(object),
      mode_(mode) {}

bool InUse::isOver() const {
    return !isInUse(OpenObject<KtDbObject>(object_, mode_).status());
}

} // namespace parts
