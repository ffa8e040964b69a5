#include "kthost/audit/Audit.h"

#include "kthost/runtime/CodeText.h"

namespace kthost {

namespace {

std::string findingOf(const std::string& when, const Leftover& leftover) {
    std::string text = when + ": " + leftover.text;
    if (!leftover.broughtBy.empty()) {
        text += " (by " + leftover.broughtBy + ")";
    } else if (leftover.code != nullptr) {
        text += " (" + codeText(leftover.code) + ")";
    }
    return text;
}

} // namespace

AuditReport Audit::afterUnload(const std::string& moduleName, const AddressRange& range) const {
    AuditReport report;
    for (const Leftover& leftover : collect()) {
        if (leftover.always || range.contains(leftover.code) || leftover.broughtBy == moduleName) {
            report.findings.push_back(findingOf("after unloading " + moduleName, leftover));
        }
    }
    return report;
}

AuditReport Audit::afterClose(const std::string& documentName) const {
    return everything("after closing " + documentName);
}

AuditReport Audit::atEnd() const {
    return everything("at the end");
}

AuditReport Audit::everything(const std::string& when) const {
    AuditReport report;
    for (const Leftover& leftover : collect()) {
        report.findings.push_back(findingOf(when, leftover));
    }
    return report;
}

std::vector<Leftover> Audit::collect() const {
    std::vector<Leftover> leftovers;
    for (const LeftoverSource& source : sources_) {
        source(leftovers);
    }
    return leftovers;
}

} // namespace kthost
