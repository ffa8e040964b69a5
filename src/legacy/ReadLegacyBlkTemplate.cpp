#include "legacy/ArchiveReader.h"
#include "legacy/FileSource.h"
#include "legacy/SelectedTexts.h"
#include "legacy/TemplateFailure.h"

#include <ktdx/KtDxNotify.h>

#include <memory>
#include <new>
#include <string>

namespace {

/// The file is closed again when this returns. None when it cannot be read.
std::unique_ptr<SelectedTexts> readSelected(const std::wstring& path) {
    try {
        FileSource file(templatePath(path));
        ArchiveReader reader(file);
        return std::make_unique<SelectedTexts>(reader);
    } catch (const ArchiveFailure&) {
        return nullptr;
    } catch (const FileFailure&) {
        return nullptr;
    }
}

void listTemplate(const wchar_t* path, KtDxStringList& blockNames, KtDxStringList& attributeTags) {
    if (path == nullptr || *path == L'\0') {
        return;
    }
    if (const auto selected = readSelected(path); selected != nullptr) {
        selected->appendTo(blockNames, attributeTags);
    }
}

void emptyList(KtDxStringList* list) {
    if (list != nullptr) {
        list->removeAll();
    }
}

} // namespace

void ktdxReadLegacyBlkTemplate(const wchar_t* templatePath, KtDxStringList* blockNames,
                               KtDxStringList* attributeTags) {
    emptyList(blockNames);
    emptyList(attributeTags);
    if (blockNames == nullptr || attributeTags == nullptr) {
        return;
    }
    try {
        listTemplate(templatePath, *blockNames, *attributeTags);
    } catch (const std::bad_alloc&) {
        blockNames->removeAll();
        attributeTags->removeAll();
    }
}
