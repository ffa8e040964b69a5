#include "kthost/documents/CommandRegistry.h"

#include "kthost/audit/Trace.h"
#include "kthost/runtime/CodeOrigin.h"

#include <algorithm>

namespace kthost {

namespace {

CommandRegistry* currentRegistry = nullptr;

void traceCommand(const char* event, std::wstring_view name, bool done) {
    if (tracing()) {
        TraceLine(event).field("command", name).field("done", done);
    }
}

} // namespace

CommandRegistry::CommandRegistry() {
    currentRegistry = this;
}

CommandRegistry::~CommandRegistry() {
    currentRegistry = nullptr;
}

CommandRegistry* CommandRegistry::current() {
    return currentRegistry;
}

void CommandRegistry::reserve(std::wstring_view name) {
    reserved_.emplace(name);
}

bool CommandRegistry::add(const wchar_t* name, const wchar_t* usage, KtEdCommandFunction function) {
    const std::wstring key(name == nullptr ? L"" : name);
    const bool added = !key.empty() && function != nullptr && !reserved_.contains(key) &&
                       commands_.try_emplace(key, key, usage == nullptr ? L"" : usage, function).second;
    traceCommand("command add", key, added);
    return added;
}

bool CommandRegistry::remove(std::wstring_view name) {
    const auto command = commands_.find(name);
    const bool there = command != commands_.end();
    traceCommand("command remove", name, there);
    if (there) {
        commands_.erase(command);
    }
    return there;
}

void CommandRegistry::removeWhere(const std::function<bool(const void*)>& leaves) {
    std::erase_if(commands_,
                  [&leaves](const auto& entry) { return leaves(addressOfFunction(entry.second.function)); });
}

const ModuleCommand* CommandRegistry::find(std::wstring_view name) const {
    const auto command = commands_.find(name);
    return command == commands_.end() ? nullptr : &command->second;
}

} // namespace kthost
