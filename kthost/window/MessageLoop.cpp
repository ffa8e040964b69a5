#include "kthost/window/MessageLoop.h"

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/window/MessageText.h"

#include <string_view>

namespace kthost {

namespace {

MessageLoop* currentLoop = nullptr;

void traceMessage(const char* event, const MSG& message) {
    if (tracing()) {
        TraceLine(event)
            .field("message", messageText(message.message))
            .field("wParam", static_cast<std::int64_t>(message.wParam))
            .field("lParam", static_cast<std::int64_t>(message.lParam));
    }
}

bool askFilter(KtEdMessageFilter filter, MSG& message) {
    const void* address = addressOfFunction(filter);
    const ModuleLoader* modules = ModuleLoader::current();
    const LoadedModule* module = modules == nullptr ? nullptr : modules->moduleAt(address);
    const ModuleCodeScope scope(ModuleCodeKind::filter, module == nullptr ? "" : module->name());
    const UINT id = message.message;
    const bool kept = filter(&message);
    if (tracing()) {
        TraceLine("filter").address("filter", address).field("message", messageText(id)).field("kept", kept);
    }
    return kept;
}

void traceFilter(const char* event, KtEdMessageFilter filter, bool done) {
    if (tracing()) {
        TraceLine(event).address("filter", addressOfFunction(filter)).field("done", done);
    }
}

} // namespace

MessageLoop::MessageLoop() {
    currentLoop = this;
}

MessageLoop::~MessageLoop() {
    currentLoop = nullptr;
}

MessageLoop* MessageLoop::current() {
    return currentLoop;
}

void MessageLoop::post(const MSG& message) {
    traceMessage("post", message);
    queue_.push_back(message);
}

std::size_t MessageLoop::pump() {
    std::size_t dispatched = 0;
    for (int round = 0; round < kMostRounds && !queue_.empty(); ++round) {
        for (std::size_t left = queue_.size(); left > 0 && !queue_.empty(); --left) {
            MSG message = queue_.front();
            queue_.pop_front();
            dispatch(message);
            ++dispatched;
        }
    }
    return dispatched;
}

bool MessageLoop::dispatch(MSG& message) {
    traceMessage("dispatch", message);
    return filters_.visitUntil([&message](KtEdMessageFilter filter) { return askFilter(filter, message); });
}

bool MessageLoop::addFilter(KtEdMessageFilter filter) {
    const bool refused = Faults::instance().next(HostCall::registerFilter) != Orbx::eOk;
    const bool added =
        !refused && filter != nullptr && filters_.add(filter, CodeOrigin{addressOfFunction(filter), {}});
    traceFilter("filter add", filter, added);
    return added;
}

bool MessageLoop::removeFilter(KtEdMessageFilter filter) {
    const bool refused = Faults::instance().next(HostCall::removeFilter) != Orbx::eOk;
    const bool removed = !refused && filter != nullptr && filters_.remove(filter);
    traceFilter("filter remove", filter, removed);
    return removed;
}

} // namespace kthost

bool ktedRegisterFilterWinMsg(KtEdMessageFilter filter) {
    kthost::MessageLoop* loop = kthost::MessageLoop::current();
    return loop != nullptr && loop->addFilter(filter);
}

bool ktedRemoveFilterWinMsg(KtEdMessageFilter filter) {
    kthost::MessageLoop* loop = kthost::MessageLoop::current();
    return loop != nullptr && loop->removeFilter(filter);
}
