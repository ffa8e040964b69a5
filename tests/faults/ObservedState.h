#pragma once

#include <functional>
#include <map>
#include <string>

class KtApDocument;

/// What the module keeps at one moment, one fact a line, with objects named by drawing and handle: alike in
/// any two runs of one history.
struct ObservedState {
    using Facts = std::map<std::string, std::string>;

    /// Which monitors there are, and what they have recorded of the drawing.
    Facts recorded;
    /// What is enabled, attached and marked, and which objects are heard by whom.
    Facts heard;

    bool operator==(const ObservedState&) const = default;
};

/// Exported by the module under observation as "ktdxObserve". Documents without a record say nothing; a
/// record without a block table monitor is asked for it.
using ObserveFunction = void (*)(KtApDocument* document, ObservedState& state);

/// What one says and the other does not, in words; empty when there is nothing. `ignore` names facts that
/// need not agree.
std::string differenceOf(const ObservedState::Facts& expected, const ObservedState::Facts& actual,
                         const std::function<bool(const std::string& fact)>& ignore);
