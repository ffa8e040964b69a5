#include "tests/faults/KeptTraces.h"

namespace {

using kthost::HostCall;

bool is(const Fault& fault, HostCall call) {
    return fault.call == call;
}

/// A definition that was erased keeps the monitor that it had. One that could not be looked at while it lived
/// never had one, and is not looked at any more. The drawing does not miss it, and it gets its monitor when
/// it is restored.
bool isOfErased(const std::string& fact) {
    return fact.find("(erased)") != std::string::npos;
}

/// Whether a representation has a monitor of its own or joins its definition's is decided by which of the two
/// is looked at first, and in which order the representations follow. A fault that puts one of them off to
/// the next scan changes that order for good. Their references are recorded all the same, by one of the
/// monitors or by two.
bool isOfDynamic(const std::string& fact) {
    return fact.find("(dynamic)") != std::string::npos;
}

/// An object that would not be let go of when it was recorded no more is heard until its monitor goes.
bool isOfLeftBehind(const std::string& fact) {
    return fact.find("(left)") != std::string::npos;
}

bool isWithoutDocumentManager(const Fault& fault) {
    return is(fault, HostCall::documentManager) && fault.andAllAfter;
}

/// A document that closes while there is no document manager takes no record with it. The next record that is
/// made has the old one given up, not destroyed, since its document is no more: its timers count on.
bool isOfGivenUp(const Fault& fault, const std::string& fact) {
    return fact == "timers" && isWithoutDocumentManager(fault);
}

} // namespace

bool mayNeedLoadingAgain(const Fault& fault) {
    return !fault.call || is(fault, HostCall::loadResource);
}

bool mayStayAfterUpdate(const Fault& /*fault*/, const std::string& fact) {
    return isOfErased(fact) || isOfDynamic(fact);
}

bool mayStayAfterAttachingAnew(const Fault& fault, const std::string& fact) {
    const bool mayBeLeftBehind =
        !fault.call || is(fault, HostCall::openObject) || is(fault, HostCall::removeReactor);
    return isOfErased(fact) || isOfDynamic(fact) || (mayBeLeftBehind && isOfLeftBehind(fact)) ||
           isOfGivenUp(fault, fact);
}

/// What the host refuses to the end cannot be let go of: a filter that it will not remove, even once, since
/// the hook that would try again is gone; an object that will not open, or keeps its reactor; the document
/// manager's list when there is no document manager while the module is unloaded.
bool mayBeLeft(const Fault& fault, const std::string& leftover) {
    const auto says = [&leftover](const char* what) { return leftover.find(what) != std::string::npos; };
    if (says("message filter")) {
        return is(fault, HostCall::removeFilter) ||
               (is(fault, HostCall::documentManager) && fault.andAllAfter);
    }
    if (says("document manager")) {
        return is(fault, HostCall::documentManager) && fault.phase == FaultPhase::unload;
    }
    const bool mayKeepReactors =
        isWithoutDocumentManager(fault) ||
        (fault.andAllAfter && (is(fault, HostCall::openObject) || is(fault, HostCall::removeReactor)));
    return mayKeepReactors && says("reactor left on");
}

/// The hook is made with the first timer and not again while a timer is there. Without memory for it at that
/// moment nobody is called at idle times.
bool isWithoutHook(const Fault& fault, const RunResult& result) {
    const auto hook = result.attachedAnew.heard.find("hook");
    return !fault.call && hook != result.attachedAnew.heard.end() && hook->second == "missing";
}
