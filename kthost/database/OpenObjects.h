#pragma once

#include <KtDb.h>
#include <KtDbObjectId.h>

#include <cstdint>
#include <string>
#include <vector>

class KtDbObject;
class KtDbObjectReactor;

/// What an audit asks about all drawings of the process: objects that somebody left open, reactors that
/// somebody left on objects. Both look at every object.
namespace kthost {

struct OpenObject {
    KtDbObjectId id;
    std::wstring className;
    std::uint64_t handle = 0;
    KtDb::OpenMode mode = KtDb::kForRead;
    std::uint32_t count = 0; ///< openings in that mode
};

struct AttachedReactor {
    KtDbObjectId id;
    std::wstring className;
    std::uint64_t handle = 0;
    KtDbObjectReactor* reactor = nullptr; ///< perhaps gone: not to be touched
    const void* code = nullptr;           ///< where the code of its class lies
};

/// Ascending by id; an object open in two modes is there twice.
std::vector<OpenObject> openObjects();
/// Ascending by id, the reactors of one object in the order in which they are called.
std::vector<AttachedReactor> attachedReactors();

} // namespace kthost
