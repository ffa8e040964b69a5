#include "CallbackSlot.h"

#include "Refusal.h"
#include "Utf8.h"

#include <KtEd.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace parts {

namespace {

using Calls = std::array<std::function<void()>, CallbackSlot::kMost>;

Calls& calls() {
    static Calls all;
    return all;
}

void report(const std::wstring& what) {
    ktedPrint((L"parts: " + what).c_str());
}

void call(std::size_t number) {
    try {
        const std::function<void()> kept = calls()[number]; // it may give its own slot back
        if (kept) {
            kept();
        }
    } catch (const Refusal& refusal) {
        report(refusal.reason());
    } catch (const std::exception& failure) {
        report(fromUtf8(failure.what()));
    }
}

template <std::size_t Number>
void plainFunction() {
    call(Number);
}

using Functions = std::array<KtRxCallback, CallbackSlot::kMost>;

template <std::size_t... Numbers>
constexpr Functions makeFunctions(std::index_sequence<Numbers...>) {
    return {&plainFunction<Numbers>...};
}

constexpr Functions kFunctions = makeFunctions(std::make_index_sequence<CallbackSlot::kMost>());

std::size_t freeSlot() {
    const auto found = std::find_if(calls().begin(), calls().end(), [](const auto& slot) { return !slot; });
    if (found == calls().end()) {
        throw Refusal(L"no more documents can be watched at once");
    }
    return static_cast<std::size_t>(found - calls().begin());
}

} // namespace

CallbackSlot::CallbackSlot(std::function<void()> call) : number_(freeSlot()) {
    calls()[number_] = std::move(call);
}

CallbackSlot::~CallbackSlot() {
    calls()[number_] = nullptr;
}

KtRxCallback CallbackSlot::function() const {
    return kFunctions[number_];
}

} // namespace parts
