#include "kthost/runtime/ModuleCode.h"

namespace kthost {

namespace {

const ModuleCodeScope* innermostScope = nullptr;

} // namespace

ModuleCodeScope::ModuleCodeScope(ModuleCodeKind kind, std::string_view name)
    : kind_(kind),
      name_(name),
      outer_(innermostScope) {
    innermostScope = this;
}

ModuleCodeScope::~ModuleCodeScope() {
    innermostScope = outer_;
}

const ModuleCodeScope* ModuleCodeScope::innermost() {
    return innermostScope;
}

std::string ModuleCodeScope::text() const {
    const std::string name(name_);
    const std::string of = name.empty() ? "" : " of " + name;
    switch (kind_) {
    case ModuleCodeKind::entryPoint:
        return "the entry point" + of;
    case ModuleCodeKind::filter:
        return "a message filter" + of;
    case ModuleCodeKind::callback:
        return "a callback" + of;
    case ModuleCodeKind::command:
        return "the command " + name;
    case ModuleCodeKind::notification:
        break;
    }
    return "the notification " + name;
}

HostResult refuseWhileModuleCodeRuns(std::string_view what) {
    const ModuleCodeScope* scope = ModuleCodeScope::innermost();
    if (scope == nullptr) {
        return {};
    }
    return {Orbx::eNotNow, std::string(what) + " while " + scope->text() + " is running"};
}

} // namespace kthost
