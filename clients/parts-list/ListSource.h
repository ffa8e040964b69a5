#pragma once

#include "Options.h"

#include <KtDbObjectId.h>

#include <string>
#include <vector>

class KtDbDatabase;

namespace parts {

/// Which definitions a list watches, and which columns it is to have.
class ListSource {
public:
    /// Reads the template and looks the names up. Throws Refusal for a block that the drawing does not have
    /// and for a template that gives none that it has.
    ListSource(const KtDbDatabase& database, const Options& options);

    /// The definitions that it means now. All that the drawing has when none was named.
    std::vector<KtDbObjectId> definitions(const KtDbDatabase& database) const;

    /// Attribute columns; empty for all tags that occur.
    const std::vector<std::wstring>& tags() const { return tags_; }

    /// Blocks that the template names and the drawing does not have.
    const std::vector<std::wstring>& absent() const { return absent_; }

private:
    void readTemplate(const KtDbDatabase& database, const std::wstring& file);

    bool all_ = false;
    std::vector<KtDbObjectId> named_;
    std::vector<std::wstring> tags_;
    std::vector<std::wstring> absent_;
};

} // namespace parts
