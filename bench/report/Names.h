#pragma once

/// What workloads are called that verdicts look at.
namespace bench {

inline constexpr const char* kFirstAttach = "first attach";
inline constexpr const char* kRescan = "rescan, nothing changed";
inline constexpr const char* kOneEdited = "one attribute edited";
inline constexpr const char* kSomeEdited = "1 in 100 edited";
inline constexpr const char* kSomeInserted = "1 in 100 inserted";
inline constexpr const char* kSomeErased = "1 in 100 erased for good";
inline constexpr const char* kOnePropagated = "propagation, 1 changed";
inline constexpr const char* kFewPropagated = "propagation, 30 changed";
inline constexpr const char* kManyPropagated = "propagation, 1000 changed";
inline constexpr const char* kInModelSpace = "instances in model space";
inline constexpr const char* kInLayouts = "instances in all layouts";
inline constexpr const char* kIdleCheck = "idle check, nothing to do";

inline constexpr const char* kTemplateRead = "template read";
inline constexpr const char* kTemplateWritten = "template written";
inline constexpr const char* kOneBlockRead = "template of one block read";
inline constexpr const char* kOneBlockWritten = "template of one block written";

inline constexpr const char* kPartsElsewhere = "parts list, edits of other blocks";
inline constexpr const char* kPartsWatched = "parts list, edits of its blocks";
inline constexpr const char* kRealPartsElsewhere = "parts list of a real drawing, edits of other blocks";
inline constexpr const char* kRealPartsWatched = "parts list of a real drawing, edits of its blocks";

} // namespace bench
