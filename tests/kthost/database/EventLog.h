#pragma once

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/OpenObjects.h"

#include <KtDbObject.h>
#include <KtDbObjectReactor.h>

#include <functional>
#include <string>
#include <vector>

namespace kthost {

/// Writes down what it hears, one text an event, each object by its handle: "modified 7".
class EventLog : public KtDbObjectReactor {
public:
    std::vector<std::string> events;
    std::function<void(const std::string& event)> hook; // called with each event, once it is written

    EventLog() = default;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    /// Lets go of whatever it still watches.
    ~EventLog() override {
        for (const AttachedReactor& watched : attachedReactors()) {
            KtDbObject* object = nullptr;
            if (watched.reactor == this &&
                ktdbOpenObject(object, watched.id, KtDbObject::desc(), KtDb::kForNotify, true) == Orbx::eOk) {
                static_cast<void>(object->removeReactor(this)); // it is there: the audit says so
                static_cast<void>(object->close());
            }
        }
    }

    void cancelled(const KtDbObject* object) override { note("cancelled", object); }

    void copied(const KtDbObject* object, const KtDbObject* copy) override {
        note("copied", object, " to " + text(copy));
    }

    void erased(const KtDbObject* object, bool erasing) override {
        note(erasing ? "erased" : "unerased", object);
    }

    void goodbye(const KtDbObject* object) override { note("goodbye", object); }

    void openedForModify(const KtDbObject* object) override { note("openedForModify", object); }

    void modified(const KtDbObject* object) override { note("modified", object); }

    void subObjectModified(const KtDbObject* object, const KtDbObject* subObject) override {
        note("subObjectModified", object, " by " + text(subObject));
    }

    void modifyUndone(const KtDbObject* object) override { note("modifyUndone", object); }

    void modifiedXData(const KtDbObject* object) override { note("modifiedXData", object); }

    void unappended(const KtDbObject* object) override { note("unappended", object); }

    void reappended(const KtDbObject* object) override { note("reappended", object); }

    void objectClosed(KtDbObjectId id) override { add("objectClosed " + std::to_string(handleOf(id))); }

    std::vector<std::string> take() {
        std::vector<std::string> taken;
        taken.swap(events);
        return taken;
    }

private:
    static std::string text(const KtDbObject* object) {
        return object == nullptr ? "nothing" : std::to_string(object->handle());
    }

    void note(const char* name, const KtDbObject* object, const std::string& rest = {}) {
        add(std::string(name) + ' ' + text(object) + rest);
    }

    void add(const std::string& event) {
        events.push_back(event);
        if (hook) {
            hook(event);
        }
    }
};

} // namespace kthost
