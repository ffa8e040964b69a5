#include "tests/model/Facts.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/runtime/Utf8.h"

#include <sstream>
#include <string_view>

namespace ktmodel {

namespace {

/// Raw value, number in its drawing and, for a record, name: as long as its drawing is open.
std::string text(KtDbObjectId id) {
    if (id.isNull()) {
        return "none";
    }
    std::ostringstream out;
    out << '#' << id.asUnsigned() << '(' << std::uppercase << std::hex << kthost::handleOf(id);
    const std::wstring_view name = kthost::recordName(id);
    out << (name.empty() ? "" : " ") << kthost::toUtf8(name) << ')';
    return out.str();
}

std::string text(bool value) {
    return value ? "yes" : "no";
}

std::string text(std::int32_t number) {
    return std::to_string(number);
}

std::string text(std::uint32_t number) {
    return std::to_string(number);
}

std::string text(std::size_t number) {
    return std::to_string(number);
}

std::string text(const std::wstring& words) {
    return kthost::toUtf8(words);
}

template <class Values>
std::string list(const Values& values) {
    std::string all;
    for (const auto& value : values) {
        all += (all.empty() ? "" : ", ") + text(value);
    }
    return all.empty() ? "nothing" : all;
}

std::string text(const TimerSnapshot& timer) {
    std::ostringstream out;
    out << (timer.enabled ? "on" : "off") << ", every " << timer.interval << ", started at "
        << timer.startTick << (timer.repeating ? ", repeating" : ", once");
    return out.str();
}

std::string text(const NestedAnswer& answer) {
    return list(answer.blocks) + ", status " + std::to_string(answer.status);
}

/// Adds facts that begin with the same words.
class About {
public:
    About(Facts& facts, std::string words) : facts_(facts), words_(std::move(words)) {}

    template <class Value>
    void is(const std::string& what, const Value& value) const {
        facts_[words_ + what] = text(value);
    }

    template <class Values>
    void are(const std::string& what, const Values& values) const {
        facts_[words_ + what] = list(values);
    }

    About about(const std::string& words) const { return {facts_, words_ + words}; }

private:
    Facts& facts_;
    std::string words_;
};

void add(const About& about, const MonitorSnapshot& monitor) {
    about.is("enabled", monitor.enabled);
    about.is("changed", monitor.changed);
    about.is("needs update", monitor.needsUpdate);
    about.are("record ids", monitor.recordIds);
    about.are("callbacks", monitor.callbacks);
    for (const auto& [container, references] : monitor.references) {
        about.are("references in " + text(container), references);
    }
    for (const auto& [reference, attributes] : monitor.attributes) {
        about.are("attributes of " + text(reference), attributes);
    }
}

void add(const About& about, const GraphAnswer& answer) {
    about.is("references", answer.direct);
    about.is("references, recursive", answer.recursive);
    about.is("instances in model space", answer.inModelSpace);
    about.is("instances in model space, recursive", answer.inModelSpaceRecursive);
    about.is("instances in layouts", answer.inLayouts);
    about.is("instances in layouts, recursive", answer.inLayoutsRecursive);
    about.is("nested in the container", answer.nested);
    about.is("nested in the container, recursive", answer.nestedRecursive);
    about.is("record of the container's drawing", answer.xrefBlock);
}

void add(const About& about, const BlocksSnapshot& blocks) {
    about.is("enabled", blocks.enabled);
    about.is("rescan needed", blocks.rescanNeeded);
    about.is("pending changes", blocks.pendingChanges);
    about.is("model space", blocks.modelSpace);
    about.are("layouts", blocks.layouts);
    about.is("monitored count", blocks.monitoredCount);
    if (blocks.timer) {
        about.is("timer", *blocks.timer);
    }
    for (const auto& [key, monitor] : blocks.monitorOfKey) {
        about.is("monitor of " + text(key), monitor);
    }
    for (const auto& [definition, monitor] : blocks.monitors) {
        add(about.about(text(definition) + ": "), monitor);
    }
    for (const auto& [question, answer] : blocks.answers) {
        add(about.about(text(question.block) + " in " + text(question.container) + ": "), answer);
    }
}

void add(const About& about, const IdleClientsSnapshot& clients) {
    about.is("timer", clients.timer);
    about.is("enabled", clients.enabled);
    about.are("callbacks", clients.callbacks);
}

void add(const About& about, const DocumentSnapshot& document) {
    about.is("enabled", document.enabled);
    if (document.blocks) {
        add(about.about("blocks: "), *document.blocks);
    }
    if (document.idleClients) {
        add(about.about("idle clients: "), *document.idleClients);
    }
}

} // namespace

Facts factsOf(const Snapshot& snapshot) {
    Facts facts;
    const About all(facts, "");
    for (const auto& [name, document] : snapshot.documents) {
        add(all.about(text(name) + ": "), document);
    }
    for (const auto& [object, reactors] : snapshot.reactors) {
        all.are("reactors on " + text(object), reactors);
    }
    all.is("message filter registered", snapshot.filterRegistered);
    all.is("timers", snapshot.timerCount);
    all.are("idle checks posted", snapshot.idleChecks);
    all.are("callbacks called", snapshot.calls);
    return facts;
}

} // namespace ktmodel
