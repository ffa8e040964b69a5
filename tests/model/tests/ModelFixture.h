#pragma once

#include "tests/model/Model.h"

#include "kthost/database/Attributes.h"
#include "kthost/database/DatabaseQueries.h"
#include "kthost/database/Definitions.h"
#include "kthost/database/References.h"
#include "kthost/documents/Host.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ktmodel {

/// A host with the document "plan", whose drawing has the definitions "R" and "S", and the model without the
/// module.
class ModelTest : public testing::Test {
protected:
    using Calls = std::vector<CallbackNumber>;

    ModelTest() { host_.clock().set(1000); }

    KtDbObjectId define(const std::wstring& name) {
        KtDbObjectId id;
        EXPECT_EQ(kthost::addDefinition(drawing(), name, id), Orbx::eOk);
        return id;
    }

    KtDbObjectId place(KtDbObjectId definition, KtDbObjectId container,
                       std::vector<kthost::AttributeText> attributes = {}) {
        KtDbObjectId id;
        EXPECT_EQ(
            kthost::insertReference(drawing(), {definition, container, {}, std::move(attributes), {}}, id),
            Orbx::eOk);
        return id;
    }

    /// In model space.
    KtDbObjectId place(KtDbObjectId definition) { return place(definition, space_); }

    bool attach(const KtArray<KtDbObjectId>& ids, CallbackNumber callback) {
        return model_->attach(&document_, ids, callback);
    }

    /// Clients called by an idle check; none of them does anything.
    Calls idle() {
        model_->idleCheckArrives(&document_);
        return play();
    }

    Calls update(bool force, bool notify) {
        EXPECT_TRUE(model_->update(&document_, force, notify));
        return play();
    }

    Calls play() {
        while (const std::optional<CallbackNumber> next = model_->passes().awaited()) {
            model_->passes().callbackBegins(*next);
            model_->passes().callbackReturns();
        }
        return model_->passes().takeExpected();
    }

    BlocksSnapshot blocks() { return model_->snapshot().documents.at(L"plan").blocks.value(); }

    MonitorSnapshot monitor(KtDbObjectId definition) { return blocks().monitors.at(definition); }

    std::multiset<ReactorName> reactorsOn(KtDbObjectId object) { return model_->snapshot().reactors[object]; }

    kthost::Database& drawing() { return *document_.database(); }

    kthost::Host host_;
    kthost::Document& document_ =
        host_.documents().create(L"plan", std::make_unique<kthost::Database>(L"plan"));
    KtDbObjectId space_ = drawing().modelSpaceId();
    KtDbObjectId r_ = define(L"R");
    KtDbObjectId s_ = define(L"S");
    std::unique_ptr<Model> model_ = std::make_unique<Model>();
};

} // namespace ktmodel
