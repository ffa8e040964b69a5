#pragma once

/// The host's status type. The numbers are part of the host's interface: modules and clients pass them on as
/// they are.
namespace Orbx {

enum [[nodiscard]] ErrorStatus : int{
    eOk = 0,
    eInvalidInput = 3,
    eInvalidBlockId = 16, ///< a null, invalid or erased block id where a living one is needed
    eOutOfRange = 20,
    eNullObjectId = 64,
    eInvalidObjectId = 65, ///< never handed out by this process
    eWasErased = 66,       ///< erased, and not asked for with "open erased"
    eObjectReleased = 67,  ///< erased for good: its memory has gone
    eNotThatKindOfClass = 68,
    eWasOpenForRead = 70,
    eWasOpenForWrite = 71,
    eWasOpenForNotify = 72,
    eTooManyReaders = 73,
    eNotOpen = 74,
    eNotOpenForWrite = 75,
    eNotInDatabase = 76,
    eAlreadyInDatabase = 77,
    eWrongDatabase = 78,
    eKeyNotFound = 80,
    eDuplicateKey = 81,
    eStillReferenced = 82,
    eSelfReference = 83, ///< a definition would come to contain itself
    eIsDependent = 84,   ///< belongs to an external reference and is not to be changed from here
    eNothingToUndo = 90,
    eNothingToRedo = 91,
    eNotNow = 92, ///< the host is in the middle of something that this would pull from under it
    eFileAccess = 100,
    eDuplicateRecordId = 260, ///< a block table record that is monitored already
    eFilterRefused = 431,     ///< the host would not register or remove a message filter
    eMissing = 506,           ///< something that must exist does not, a failed allocation included
};

} // namespace Orbx
