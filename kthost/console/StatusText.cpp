#include "kthost/console/StatusText.h"

#include "kthost/console/CommandError.h"

#include <map>

namespace kthost {

std::string statusText(Orbx::ErrorStatus status) {
    static const std::map<int, const char*> texts{
        {Orbx::eOk, "it is done"},
        {Orbx::eInvalidInput, "that is not allowed"},
        {Orbx::eInvalidBlockId, "there is no such block"},
        {Orbx::eOutOfRange, "it is out of range"},
        {Orbx::eWasErased, "it is erased"},
        {Orbx::eObjectReleased, "it is erased for good"},
        {Orbx::eNotThatKindOfClass, "it is something else"},
        {Orbx::eWasOpenForRead, "it is open for reading"},
        {Orbx::eWasOpenForWrite, "it is open for writing"},
        {Orbx::eWasOpenForNotify, "it is open for notification"},
        {Orbx::eNotInDatabase, "its insertion is undone"},
        {Orbx::eWrongDatabase, "it belongs to another drawing"},
        {Orbx::eKeyNotFound, "it is not there"},
        {Orbx::eDuplicateKey, "the name is taken"},
        {Orbx::eStillReferenced, "references to it are left"},
        {Orbx::eSelfReference, "a block would contain itself"},
        {Orbx::eIsDependent, "it belongs to an attached drawing"},
        {Orbx::eNothingToUndo, "there is nothing to undo"},
        {Orbx::eNothingToRedo, "there is nothing to redo"},
        {Orbx::eNotNow, "not now"},
        {Orbx::eFileAccess, "the file cannot be read"},
    };
    const auto found = texts.find(status);
    return found != texts.end() ? found->second : "status " + std::to_string(status);
}

void require(Orbx::ErrorStatus status, const std::string& what) {
    if (status != Orbx::eOk) {
        throw CommandError(what + ": " + statusText(status));
    }
}

} // namespace kthost
