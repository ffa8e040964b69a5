#pragma once

#include <KtDbBlockTableRecord.h>
#include <KtDbObjectReactor.h>

#include <tuple>

namespace bench::limit {

/// What notifications leave behind for the next idle check.
struct Marks {
    bool rescanNeeded = true;
    bool changed = false;
};

/// Makes the calls that a definition's monitor has to make when it is notified.
class Watcher final : public KtDbObjectReactor {
public:
    explicit Watcher(Marks& marks) : marks_(marks) {}

    void copied(const KtDbObject* object, const KtDbObject* /*copy*/) override {
        marks_.rescanNeeded = true;
        marks_.changed = marks_.changed || object->isA() != KtDbBlockTableRecord::desc();
    }

    void goodbye(const KtDbObject* object) override {
        std::ignore = object->removeReactor(this); // it goes either way
    }

    void openedForModify(const KtDbObject* object) override {
        marks_.rescanNeeded = true;
        if (object->isA() != KtDbBlockTableRecord::desc() ||
            static_cast<const KtDbBlockTableRecord*>(object)->isFromExternalReference()) {
            marks_.changed = true;
        }
    }

private:
    Marks& marks_;
};

/// The same for the block table.
class TableWatcher final : public KtDbObjectReactor {
public:
    explicit TableWatcher(Marks& marks) : marks_(marks) {}

    void openedForModify(const KtDbObject* /*object*/) override { marks_.rescanNeeded = true; }

private:
    Marks& marks_;
};

} // namespace bench::limit
