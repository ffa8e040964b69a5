#pragma once

#include "kthost/audit/Audit.h"
#include "kthost/documents/CommandRegistry.h"
#include "kthost/documents/DocumentManager.h"
#include "kthost/runtime/CallbackLedger.h"
#include "kthost/runtime/ModuleLoader.h"
#include "kthost/runtime/SystemRegistry.h"
#include "kthost/window/HostClock.h"
#include "kthost/window/MainWindow.h"
#include "kthost/window/MessageLoop.h"

#include <string>

namespace kthost {

/// The whole host, from its start (construction) to its end. One at a time in a process, any number one after
/// the other. User-interface thread only.
///
///     kthost::Host host;
///     host.modules().load(folder / "KtDxNotify.kmx");
///     kthost::Document& document = host.documents().create(L"plan", std::move(database));
///     host.documents().runCommand(document, L"set", [](kthost::Document&) { ...; });
///     host.loop().pump();
///     const kthost::AuditReport& report = host.end();
class Host {
public:
    /// Disarms all faults.
    Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    /// Ends the host if that has not been done.
    ~Host();

    static Host* current();

    SystemRegistry& registry() { return registry_; }

    CallbackLedger& callbacks() { return callbacks_; }

    ModuleLoader& modules() { return modules_; }

    HostClock& clock() { return clock_; }

    MainWindow& window() { return window_; }

    MessageLoop& loop() { return loop_; }

    CommandRegistry& commands() { return commands_; }

    DocumentManager& documents() { return documents_; }

    /// What has been found so far: by the audit of each module unloaded and each document closed.
    const AuditReport& report() const { return report_; }

    /// Closes the documents, tells the modules that the host ends, unloads them (the youngest first) and
    /// audits what is left. Gives what all audits found; asking again only gives it again. Not to be called
    /// while module code runs.
    const AuditReport& end();

private:
    void addSources();
    void moduleLeaves(const LoadedModule& module);
    void documentGoes(const Document& document);

    SystemRegistry registry_;
    CallbackLedger callbacks_;
    HostClock clock_;
    MainWindow window_;
    MessageLoop loop_;
    ModuleLoader modules_;
    CommandRegistry commands_;
    DocumentManager documents_;
    Audit audit_;
    AuditReport report_;
    bool ending_ = false;
};

} // namespace kthost
