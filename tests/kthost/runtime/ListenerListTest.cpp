#include "kthost/runtime/ListenerList.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kthost {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Listeners : public testing::Test {
protected:
    std::vector<int> visited() {
        std::vector<int> order;
        list.visitUntil([&order](const int* listener) {
            order.push_back(*listener);
            return false;
        });
        return order;
    }

    void addAll() {
        for (int* listener : {&one, &two, &three}) {
            ASSERT_TRUE(list.add(listener, std::string()));
        }
    }

    int one = 1;
    int two = 2;
    int three = 3;
    ListenerList<int, std::string> list;
};

TEST_F(Listeners, AreVisitedInTheOrderOfTheirRegistration) {
    list.add(&two, {});
    list.add(&one, {});
    list.add(&three, {});
    EXPECT_THAT(visited(), ElementsAre(2, 1, 3));
}

TEST_F(Listeners, AreHeldOnce) {
    EXPECT_TRUE(list.add(&one, {}));
    EXPECT_FALSE(list.add(&one, {}));
    EXPECT_THAT(visited(), ElementsAre(1));
}

TEST_F(Listeners, AreNotVisitedOnceRemoved) {
    addAll();
    EXPECT_TRUE(list.remove(&two));
    EXPECT_THAT(visited(), ElementsAre(1, 3));
}

TEST_F(Listeners, CannotBeRemovedTwice) {
    addAll();
    EXPECT_TRUE(list.remove(&two));
    EXPECT_FALSE(list.remove(&two));
}

TEST_F(Listeners, StopBeingVisitedAtTheFirstThatIsSatisfied) {
    addAll();
    std::vector<int> order;
    EXPECT_TRUE(list.visitUntil([&order](const int* listener) {
        order.push_back(*listener);
        return *listener == 2;
    }));
    EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_F(Listeners, MayRemoveThemselvesWhileVisited) {
    addAll();
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        list.remove(listener);
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
    EXPECT_THAT(visited(), IsEmpty());
}

TEST_F(Listeners, MayRemoveTheNextWhileVisited) {
    addAll();
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        list.remove(&two);
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1, 3));
}

TEST_F(Listeners, MayRemoveAllWhileVisited) {
    addAll();
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        list.removeWhere([](const std::string&) { return true; });
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1));
    EXPECT_THAT(visited(), IsEmpty());
}

TEST_F(Listeners, AddedDuringAWalkAreVisitedFromTheNextOn) {
    list.add(&one, {});
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        list.add(&two, {});
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1));
    EXPECT_THAT(visited(), ElementsAre(1, 2));
}

TEST_F(Listeners, TakingTheAddressOfOneThatWentAreVisitedFromTheNextWalkOn) {
    addAll();
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        if (*listener == 1) {
            list.remove(&two);
            list.add(&two, {});
        }
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1, 3));
    EXPECT_THAT(visited(), ElementsAre(1, 3, 2));
}

TEST_F(Listeners, MayBeVisitedInsideAVisit) {
    addAll();
    std::vector<int> order;
    list.visitUntil([&](const int* listener) {
        order.push_back(*listener);
        if (*listener == 1) {
            list.remove(&one);
            EXPECT_THAT(visited(), ElementsAre(2, 3));
        }
        return false;
    });
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST_F(Listeners, CanBeWalkedAgainAfterAVisitThatThrew) {
    addAll();
    EXPECT_THROW(list.visitUntil([](const int*) -> bool { throw 1; }), int);
    list.remove(&one);
    EXPECT_THAT(visited(), ElementsAre(2, 3));
}

TEST_F(Listeners, GoByTheirNotes) {
    list.add(&one, "stays");
    list.add(&two, "goes");
    list.removeWhere([](const std::string& note) { return note == "goes"; });
    EXPECT_THAT(visited(), ElementsAre(1));
}

} // namespace
} // namespace kthost
