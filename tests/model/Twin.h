#pragma once

#include "tests/model/Model.h"
#include "tests/model/Snapshot.h"

#include <KtArray.h>
#include <KtDbObjectId.h>
#include <KtRxCallback.h>
#include <WindowSystem.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ktmodel {

/// The model beside the module that is linked into this program. To be made when the module's application
/// object has just been made, and destroyed when that has gone; one at a time. Until then it needs no word
/// from anybody: the program is linked so that the module's exports, whoever calls them, and the calls of
/// clients come by here (see Wrapped.cpp), and idle-check messages do because they are shown to this object's
/// filter first.
///
/// The host's clock must stand still while the message loop is pumped. Windows in which calls or allocations
/// of the module are made to fail are not the model's: forget what was expected of them by making a new Twin,
/// or look at the difference only after an update that went well.
class Twin {
public:
    Twin();
    Twin(const Twin&) = delete;
    Twin& operator=(const Twin&) = delete;
    ~Twin();

    static Twin* current();

    Model& model() { return model_; }

    /// To be asked after every idle check, never from inside a callback: what the module has recorded, called
    /// and answered since the last question otherwise than it had to. Empty when nothing.
    std::string difference(const std::map<std::wstring, std::vector<GraphQuestion>>& questions = {});

    /// Around the module's exports: the model goes first, then both results are compared.
    template <class Result, typename Expected, typename Real>
    Result exportCalled(const char* name, Expected expected, Real real);
    /// Around the call of a client.
    void clientCalled(KtRxCallback callback, void (*real)(KtRxCallback));

private:
    static bool watchMessages(MSG* message);
    void note(const char* name, bool expected, bool actual);

    Model model_;
    std::string wrongResults_;
};

template <class Result, typename Expected, typename Real>
Result Twin::exportCalled(const char* name, Expected expected, Real real) {
    const std::size_t depth = model_.passes().depth();
    const bool right = expected(model_);
    Result result;
    try {
        result = real();
    } catch (...) {
        model_.passes().abandonDownTo(depth);
        throw;
    }
    model_.passes().abandonDownTo(depth);
    note(name, right, result != Result());
    return result;
}

/// Questions about every pair of records of a drawing, layouts included as containers: for small drawings.
std::vector<GraphQuestion> allQuestions(const Snapshot& snapshot, const std::wstring& document);

} // namespace ktmodel
