#include "kthost/runtime/RuntimeClass.h"

#include <gtest/gtest.h>

namespace kthost {
namespace {

class Extension : public KtRxObject {};

class Classes : public testing::Test {
protected:
    RuntimeClass root{L"Root", nullptr};
    RuntimeClass middle{L"Middle", &root};
    RuntimeClass leaf{L"Leaf", &middle};
    RuntimeClass protocol{L"Protocol", nullptr};
    Extension extension;
    Extension other;
};

TEST_F(Classes, DeriveFromThemselvesAndTheirAncestors) {
    EXPECT_TRUE(leaf.isDerivedFrom(&leaf));
    EXPECT_TRUE(leaf.isDerivedFrom(&root));
}

TEST_F(Classes, DoNotDeriveFromTheirChildren) {
    EXPECT_FALSE(middle.isDerivedFrom(&leaf));
}

TEST_F(Classes, FindAnExtensionAlongTheirParents) {
    middle.addX(&protocol, &extension);
    EXPECT_EQ(leaf.queryX(&protocol), &extension);
}

TEST_F(Classes, PreferTheNearestExtension) {
    root.addX(&protocol, &extension);
    leaf.addX(&protocol, &other);
    EXPECT_EQ(leaf.queryX(&protocol), &other);
}

TEST_F(Classes, FindNoExtensionOfTheirChildren) {
    leaf.addX(&protocol, &extension);
    EXPECT_EQ(middle.queryX(&protocol), nullptr);
}

TEST_F(Classes, GiveBackTheExtensionThatIsReplaced) {
    EXPECT_EQ(leaf.addX(&protocol, &extension), nullptr);
    EXPECT_EQ(leaf.addX(&protocol, &other), &extension);
}

TEST_F(Classes, GiveBackTheExtensionThatIsWithdrawn) {
    leaf.addX(&protocol, &extension);
    EXPECT_EQ(leaf.removeX(&protocol), &extension);
    EXPECT_EQ(leaf.queryX(&protocol), nullptr);
    EXPECT_EQ(leaf.removeX(&protocol), nullptr);
}

TEST_F(Classes, AnswerAsTheClassOfAnObject) {
    EXPECT_STREQ(extension.isA()->name(), L"KtRxObject");
    EXPECT_TRUE(extension.isKindOf(KtRxObject::desc()));
    EXPECT_FALSE(extension.isKindOf(&leaf));
}

} // namespace
} // namespace kthost
