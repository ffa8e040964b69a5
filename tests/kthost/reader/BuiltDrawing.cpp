#include "tests/kthost/reader/BuiltDrawing.h"

#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/DynamicDefinitions.h"
#include "kthost/reader/DrawingBuilder.h"

#include <KtArray.h>
#include <KtDbBlockReference.h>
#include <KtDbXData.h>

#include <gtest/gtest.h>

#include <sstream>

namespace kthost::test {

BuiltDrawing::BuiltDrawing(const Design& design) : database_(buildDrawing(design, L"built")) {}

KtDbObjectId BuiltDrawing::record(std::wstring_view name) const {
    const KtDbObjectId id = recordByName(*database_, name);
    EXPECT_FALSE(id.isNull()) << "no record " << testing::PrintToString(std::wstring(name));
    return id;
}

std::vector<std::wstring> BuiltDrawing::recordNames() const {
    std::vector<std::wstring> names;
    for (const KtDbObjectId id : records(*database_, false)) {
        names.emplace_back(recordName(id));
    }
    return names;
}

std::vector<std::wstring> BuiltDrawing::placedIn(KtDbObjectId container) const {
    std::vector<std::wstring> names;
    for (const KtDbObjectId id : referencesIn(container)) {
        names.emplace_back(recordName(definitionOf(id)));
    }
    return names;
}

KtDbObjectId BuiltDrawing::placed(KtDbObjectId container, std::wstring_view name) const {
    KtDbObjectId found;
    for (const KtDbObjectId id : referencesIn(container)) {
        const KtDbObjectId definition = definitionOf(id);
        const KtDbObjectId represented = representedDefinition(definition);
        if (recordName(represented.isNull() ? definition : represented) == name) {
            EXPECT_TRUE(found.isNull()) << "placed twice";
            found = id;
        }
    }
    EXPECT_FALSE(found.isNull()) << "not placed";
    return found;
}

std::vector<std::wstring> attributeTexts(KtDbObjectId reference) {
    std::vector<std::wstring> texts;
    for (const AttributeView& attribute : attributesOf(reference)) {
        texts.push_back(std::wstring(attribute.tag) + L"=" + std::wstring(attribute.text));
    }
    return texts;
}

std::vector<std::wstring> occurrenceTexts(KtDbObjectId reference) {
    KtDbBlockReference* opened = nullptr;
    EXPECT_EQ(ktdbOpenObject(opened, reference, KtDb::kForRead), Orbx::eOk);
    KtArray<KtDbXDataItem> items;
    std::vector<std::wstring> texts;
    if (opened->getXData(kKtDbOccurrences, items) == Orbx::eOk) {
        for (const KtDbXDataItem& item : items) {
            texts.push_back(item.kind == KtDbXDataItem::kText ? item.text : std::to_wstring(item.integer));
        }
    }
    EXPECT_EQ(opened->close(), Orbx::eOk);
    return texts;
}

std::wstring handleText(KtDbObjectId id) {
    std::wostringstream text;
    text << std::hex << std::uppercase << handleOf(id);
    return text.str();
}

} // namespace kthost::test
