#include "kthost/reader/SheetRecords.h"

#include "kthost/database/Database.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"
#include "kthost/reader/RequireStatus.h"

#include <cstdint>

namespace kthost {

namespace {

std::wstring handleText(std::uint64_t handle) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    std::wstring text;
    do {
        text.insert(text.begin(), kDigits[handle % 16]);
        handle /= 16;
    } while (handle != 0);
    return text;
}

NewReference sheetReference(const SheetSymbol& sheet, KtDbObjectId definition, KtDbObjectId container) {
    NewReference reference{definition, container, {sheet.position.x, sheet.position.y, 0}, {}, {}};
    reference.attributes.reserve(sheet.properties.size());
    for (const SchematicProperty& property : sheet.properties) {
        reference.attributes.push_back({property.name, property.text});
    }
    return reference;
}

} // namespace

SheetRecords::SheetRecords(const Design& design, Database& database, UniqueNames& names) {
    records_.reserve(design.files.size());
    records_.push_back(database.modelSpaceId());
    for (std::size_t file = 1; file < design.files.size(); ++file) {
        addRecord(design.files[file], database, names);
    }
    sheetHandles_.reserve(design.files.size());
    for (const SheetFile& file : design.files) {
        placeSheets(file, database);
    }
    paths_.reserve(design.instances.size());
    for (std::size_t instance = 0; instance < design.instances.size(); ++instance) {
        addPath(design, instance);
    }
}

void SheetRecords::addRecord(const SheetFile& file, Database& database, UniqueNames& names) {
    KtDbObjectId& record = records_.emplace_back();
    require(addDefinition(database, names.take(recordNameText(file.name)), record),
            "add the record of a sheet file");
}

void SheetRecords::placeSheets(const SheetFile& file, Database& database) {
    const KtDbObjectId container = records_[sheetHandles_.size()];
    std::vector<std::wstring>& handles = sheetHandles_.emplace_back();
    handles.reserve(file.children.size());
    for (std::size_t sheet = 0; sheet < file.children.size(); ++sheet) {
        KtDbObjectId id;
        require(insertReference(
                    database,
                    sheetReference(file.schematic.sheets[sheet], records_[file.children[sheet]], container),
                    id),
                "place a sheet");
        handles.push_back(handleText(handleOf(id)));
    }
}

void SheetRecords::addPath(const Design& design, std::size_t instance) {
    const SheetInstance& place = design.instances[instance];
    if (instance == 0) {
        paths_.emplace_back(L"/");
        return;
    }
    const std::wstring outer = place.parent == 0 ? std::wstring() : paths_[place.parent];
    paths_.push_back(outer + L"/" + sheetHandles_[design.instances[place.parent].file][place.sheet]);
}

} // namespace kthost
