#include "kthost/documents/Host.h"

#include <KtDbObject.h>
#include <KtRxModule.h>

#include "kthost/audit/TraceIds.h"
#include "kthost/database/OpenObjects.h"
#include "kthost/database/TraceDescriber.h"
#include "kthost/documents/HostLeftovers.h"
#include "kthost/documents/PrintSink.h"
#include "kthost/runtime/Faults.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

namespace {

Host* currentHost = nullptr;

void append(AuditReport& report, AuditReport&& more) {
    report.findings.insert(report.findings.end(), std::make_move_iterator(more.findings.begin()),
                           std::make_move_iterator(more.findings.end()));
}

// Objects outlive modules: what stays on them would be called into memory that is no longer there.
void removeObjectReactors(const AddressRange& range) {
    for (const AttachedReactor& attached : attachedReactors()) {
        KtDbObject* object = nullptr;
        if (range.contains(attached.code) &&
            ktdbOpenObject(object, attached.id, KtDbObject::desc(), KtDb::kForNotify, true) == Orbx::eOk) {
            static_cast<void>(object->removeReactor(attached.reactor)); // it is there
            static_cast<void>(object->close());
        }
    }
}

} // namespace

Host::Host() {
    currentHost = this;
    Faults::instance().reset();
    describeIdsInTrace();
    addSources();
    modules_.onLeaving = [this](const LoadedModule& module) { moduleLeaves(module); };
    documents_.onDestroying = [this](const Document& document) { documentGoes(document); };
}

Host::~Host() {
    end();
    setTraceIdDescriber({});
    setPrintSink({});
    Faults::instance().reset();
    currentHost = nullptr;
}

Host* Host::current() {
    return currentHost;
}

void Host::addSources() {
    audit_.addSource(addOpenObjects);
    audit_.addSource(addObjectReactors);
    audit_.addSource([this](auto& leftovers) { addManagerReactors(documents_, leftovers); });
    audit_.addSource([this](auto& leftovers) { addFilters(loop_, leftovers); });
    audit_.addSource([this](auto& leftovers) { addCommands(commands_, leftovers); });
    audit_.addSource([this](auto& leftovers) { addRegistryEntries(registry_, leftovers); });
    audit_.addSource([this](auto& leftovers) { addCallbacks(callbacks_, leftovers); });
}

void Host::moduleLeaves(const LoadedModule& module) {
    append(report_, audit_.afterUnload(module.name(), module.range()));
    const AddressRange range = module.range();
    const auto leaves = [range](const CodeOrigin& origin) { return range.contains(origin.code); };
    removeObjectReactors(range);
    documents_.reactors().removeWhere(leaves);
    loop_.filters().removeWhere(leaves);
    commands_.removeWhere([range](const void* address) { return range.contains(address); });
}

void Host::documentGoes(const Document& document) {
    Audit audit;
    audit.addSource([this](auto& leftovers) { addOpenObjectsWithoutDocument(documents_, leftovers); });
    if (ending_) {
        // Before the end a reactor may wait for the goodbye of its object; at the end all are to be gone.
        audit.addSource([this](auto& leftovers) { addObjectReactorsWithoutDocument(documents_, leftovers); });
    }
    append(report_, audit.afterClose(toUtf8(document.name())));
}

const AuditReport& Host::end() {
    if (!ending_) {
        ending_ = true;
        documents_.closeAll();
        modules_.sendToAll(KtRx::kQuit);
        static_cast<void>(modules_.unloadAll()); // refused only where this must not be called
        append(report_, audit_.atEnd());
    }
    return report_;
}

} // namespace kthost
