#pragma once

#include <KtDbObjectId.h>
#include <KtDbObjectReactor.h>

#include <unordered_set>
#include <vector>

namespace parts {

/// Hears whether any of a number of records and references has been touched. KtDxNotify does not hear all of
/// them: not a representation that joined its definition while the drawing was being watched, nor the
/// attributes of a reference that was erased when it began to be watched. What becomes of those later, only
/// somebody with ears of his own can know.
class TouchListener : public KtDbObjectReactor {
public:
    TouchListener() = default;
    TouchListener(const TouchListener&) = delete;
    TouchListener& operator=(const TouchListener&) = delete;
    /// Lets go of every object that is still there.
    ~TouchListener() override;

    /// Listens to these as well. The same ones as the last time cost next to nothing; one that cannot be
    /// opened is left out, and tried again the next time.
    void listenTo(std::vector<KtDbObjectId> objects);

    /// True when one of them, or an attribute of one, was about to be changed since `forget`.
    bool isTouched() const { return touched_; }

    /// Which of them, since `forget`.
    const std::unordered_set<KtDbObjectId>& touched() const { return touchedObjects_; }

    /// False while one of them cannot be listened to, and when a touch could not be noted.
    bool isComplete() const { return isComplete_; }

    void forget();

    void openedForModify(const KtDbObject* object) override;
    void subObjectModified(const KtDbObject* object, const KtDbObject* subObject) override;
    void goodbye(const KtDbObject* object) override;

private:
    void note(const KtDbObject* object);

    std::unordered_set<KtDbObjectId> objects_;
    std::vector<KtDbObjectId> asked_; // for the last time
    bool isComplete_ = false;         // all of them are heard
    std::unordered_set<KtDbObjectId> touchedObjects_;
    bool touched_ = false;
};

} // namespace parts
