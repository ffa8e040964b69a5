#include "kthost/reader/SchematicFields.h"

#include <string_view>
#include <utility>

namespace kthost {

namespace {

// Version 6 has a name of its own for the two properties that every sheet has.
std::wstring currentName(const std::wstring& name) {
    if (name == L"Sheet name") {
        return L"Sheetname";
    }
    return name == L"Sheet file" ? L"Sheetfile" : name;
}

void readSheetProperty(SexprCursor& in, SheetSymbol& sheet) {
    const SexprToken text = readProperty(in, sheet.properties);
    SchematicProperty& property = sheet.properties.back();
    property.name = currentName(property.name);
    if (property.name == L"Sheetname") {
        sheet.name = property.text;
    } else if (property.name == L"Sheetfile") {
        sheet.file = property.text;
        sheet.filePosition = in.position(text);
    }
}

constexpr SexprField<SheetPage> kPageFields[] = {
    {"page", [](SexprCursor& in, SheetPage& page) { page.page = in.text("a page"); }}};

void readPage(SexprCursor& in, std::vector<SheetPage>& pages) {
    SheetPage page;
    page.path = in.text("a path of sheets");
    in.readFields<SheetPage>(page, kPageFields);
    pages.push_back(std::move(page));
}

constexpr SexprField<std::vector<SheetPage>> kPageProjectFields[] = {{"path", readPage}};

constexpr SexprField<std::vector<SheetPage>> kPageInstancesFields[] = {
    {"project", [](SexprCursor& in, std::vector<SheetPage>& pages) {
         in.readFields<std::vector<SheetPage>>(pages, kPageProjectFields);
     }}};

constexpr SexprField<SheetSymbol> kSheetFields[] = {
    {"property", readSheetProperty},
    {"at", [](SexprCursor& in, SheetSymbol& sheet) { sheet.position = readPoint(in, "a coordinate"); }},
    {"size", [](SexprCursor& in, SheetSymbol& sheet) { sheet.size = readPoint(in, "a length"); }},
    {"uuid", [](SexprCursor& in, SheetSymbol& sheet) { sheet.uuid = in.text("a uuid"); }},
    {"instances",
     [](SexprCursor& in, SheetSymbol& sheet) {
         in.readFields<std::vector<SheetPage>>(sheet.pages, kPageInstancesFields);
     }},
};

} // namespace

void readSheet(SexprCursor& in, Schematic& schematic) {
    const std::size_t start = in.listOffset();
    SheetSymbol sheet;
    in.readFields<SheetSymbol>(sheet, kSheetFields);
    if (sheet.file.empty()) {
        in.source().fail(start, "a sheet that names its file", "one that does not");
    }
    schematic.sheets.push_back(std::move(sheet));
}

} // namespace kthost
