#include "ListSource.h"

#include "DrawingIds.h"
#include "Refusal.h"

#include <ktdx/KtDxNotify.h>
#include <ktdx/StringList.h>

namespace parts {

ListSource::ListSource(const KtDbDatabase& database, const Options& options)
    : all_(options.blocks.empty() && options.templateFile.empty()) {
    if (!options.templateFile.empty()) {
        readTemplate(database, options.templateFile);
    }
    for (const std::wstring& block : options.blocks) {
        named_.push_back(findRecord(database, block));
        if (named_.back().isNull()) {
            throw Refusal(L"the drawing has no block '" + block + L"'");
        }
    }
}

std::vector<KtDbObjectId> ListSource::definitions(const KtDbDatabase& database) const {
    return all_ ? listRecords(database) : named_;
}

void ListSource::readTemplate(const KtDbDatabase& database, const std::wstring& file) {
    KtDxStringVector blocks;
    KtDxStringVector tags;
    ktdxReadLegacyBlkTemplate(file.c_str(), &blocks, &tags);
    if (blocks.strings().empty()) {
        throw Refusal(L"the template '" + file + L"' cannot be read or selects no block");
    }
    for (const std::wstring& block : blocks.strings()) {
        const KtDbObjectId record = findRecord(database, block);
        if (record.isNull()) {
            absent_.push_back(block);
        } else {
            named_.push_back(record);
        }
    }
    if (named_.empty()) {
        throw Refusal(L"the drawing has none of the blocks that the template '" + file + L"' selects");
    }
    tags_ = tags.strings();
}

} // namespace parts
