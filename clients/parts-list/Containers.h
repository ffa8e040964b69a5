#pragma once

#include <KtDbObjectId.h>

#include <string>
#include <unordered_map>
#include <vector>

class KtDbDatabase;

namespace parts {

/// One reference to a container, and the container that it lies in itself.
struct Placement {
    std::wstring handle;
    KtDbObjectId container;
};

/// Answers how the containers of a drawing hang together, those of attached drawings included: what lies in
/// the model space of an attached drawing lies, for this one, in the record that attaches it. Valid until the
/// drawing changes. Everything here throws InUse.
class Containers {
public:
    explicit Containers(const KtDbDatabase& database);

    /// The record of this drawing that stands for another drawing's model space; any other id as it is.
    KtDbObjectId resolve(KtDbObjectId container) const;
    /// The name by which people know it; that of the attaching record for an attached drawing's model space.
    const std::wstring& name(KtDbObjectId container);
    /// True for the layouts of this drawing itself.
    bool isLayout(KtDbObjectId container) const;
    /// The living references to a container.
    std::vector<Placement> placements(KtDbObjectId container) const;

private:
    void addExternalSpaces(const KtDbDatabase& first);

    const KtDbDatabase* database_;
    std::unordered_map<KtDbObjectId, KtDbObjectId> recordOfSpace_; // model space of an attached drawing
    std::unordered_map<KtDbObjectId, std::wstring> names_;
};

} // namespace parts
