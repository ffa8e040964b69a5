#include "kthost/console/AttributeCommands.h"

#include <KtDbXData.h>

#include "kthost/console/ObjectNames.h"
#include "kthost/console/Session.h"
#include "kthost/console/StatusText.h"
#include "kthost/console/Words.h"
#include "kthost/database/Attributes.h"
#include "kthost/database/ExtendedData.h"
#include "kthost/runtime/Utf8.h"

namespace kthost {

void runAttribute(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const std::wstring tag = words.take("TAG");
    const std::wstring text = words.take("TEXT");
    words.expectEnd();
    const std::string what = referenceText(id);
    session.edit(L"attribute", [&](Database& database) {
        KtDbObjectId attribute;
        require(appendAttribute(database, id, tag, text, attribute), what + " cannot be given an attribute");
    });
    session.remember(id);
    session.say("gave " + what + " the attribute " + toUtf8(tag) + " = " + toUtf8(text));
}

void runXData(Session& session, Words& words) {
    const KtDbObjectId id = session.reference(words.take("REF"));
    const std::wstring application = words.take("APPLICATION");
    std::vector<XDataValue> values;
    while (!words.atEnd()) {
        values.push_back({KtDbXDataItem::kText, 0, words.take("TEXT")});
    }
    const bool none = values.empty();
    session.edit(L"xdata", [&](Database& database) {
        require(setXData(database, id, application, std::move(values)),
                referenceText(id) + " cannot be changed");
    });
    session.remember(id);
    session.say((none ? "took away the data of " : "set the data of ") + referenceText(id) + " for " +
                toUtf8(application));
}

} // namespace kthost
