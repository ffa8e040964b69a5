#include "kthost/database/ExtendedData.h"

#include "kthost/database/Changes.h"
#include "kthost/database/DatabaseContents.h"
#include "kthost/database/WriteOpening.h"

#include <algorithm>

namespace kthost {

namespace {

void replace(XData& data, std::wstring_view application, std::vector<XDataValue> values) {
    auto& all = data.applications;
    const auto present =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == application; });
    if (values.empty()) {
        if (present != all.end()) {
            all.erase(present);
        }
    } else if (present != all.end()) {
        present->values = std::move(values);
    } else {
        all.push_back({std::wstring(application), std::move(values)});
    }
}

} // namespace

Orbx::ErrorStatus setXData(Database& database, KtDbObjectId object, std::wstring_view application,
                           std::vector<XDataValue> values) {
    DatabaseContents& contents = database.contents();
    if (contentsOf(object) != &contents) {
        return object.isNull() ? Orbx::eNullObjectId : Orbx::eWrongDatabase;
    }
    WriteOpening opening(object);
    if (opening.status() != Orbx::eOk || object.isErased()) {
        return opening.status() != Orbx::eOk ? opening.status() : Orbx::eWasErased;
    }
    const Orbx::ErrorStatus status = beginXDataChange(object);
    if (status == Orbx::eOk) {
        replace(contents.xdata[object], application, std::move(values));
        if (contents.xdata[object].applications.empty()) {
            contents.xdata.erase(object);
        }
    }
    opening.close();
    return status;
}

} // namespace kthost
