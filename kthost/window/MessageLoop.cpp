#include "kthost/window/MessageLoop.h"

#include "kthost/audit/Trace.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/ModuleCode.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/window/MessageText.h"
#include "kthost/window/SystemQueue.h"

#include <string_view>

namespace kthost {

namespace {

MessageLoop* currentLoop = nullptr;

void traceMessage(const char* event, UINT message, WPARAM wParam, LPARAM lParam) {
    if (tracing()) {
        TraceLine(event)
            .field("message", messageText(message))
            .field("wParam", static_cast<std::int64_t>(wParam))
            .field("lParam", static_cast<std::int64_t>(lParam));
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

const std::deque<MSG>& MessageLoop::queue() {
    takePostedMessages(queue_);
    return queue_;
}

std::size_t MessageLoop::pump() {
    std::size_t dispatched = 0;
    for (int round = 0; round < kMostRounds && !queue().empty(); ++round) {
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
    traceMessage("dispatch", message.message, message.wParam, message.lParam);
    const bool kept =
        filters_.visitUntil([&message](KtEdMessageFilter filter) { return askFilter(filter, message); });
    if (!kept) {
        deliverToWindow(message);
    }
    return kept;
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

void tracePosting(UINT message, WPARAM wParam, LPARAM lParam) {
    traceMessage("post", message, wParam, lParam);
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
