#include "toolkit/exception.h"
#include "toolkit/menu.h"
#include "toolkit/notification_center.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

using Words = std::vector<std::string>;

// A centre, a sender, and handlers that write down what they heard as "who:name".
class NotificationCentre : public testing::Test {
protected:
    NotificationCenter::Handler noteAs(const std::string& who) {
        return [this, who](const Notification& notification) { heard.push_back(who + ":" + notification.name); };
    }
    void post(const std::string& name, const Object* from = nullptr) {
        centre.post({.name = name, .sender = from, .userInfo = {}});
    }
    static std::shared_ptr<const void> makeObserver() { return std::make_shared<int>(); }

    NotificationCenter centre;
    Menu sender{{}}, otherSender{{}};
    Words heard;
    std::shared_ptr<const void> first = makeObserver(), second = makeObserver();
};

TEST_F(NotificationCentre, DeliversBeforePostReturns) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"first:PaperChanged"}));
}

TEST_F(NotificationCentre, DeliversInTheOrderOfAdding) {
    centre.addObserver(second, "", nullptr, noteAs("second"));
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"second:PaperChanged", "first:PaperChanged"}));
}

TEST_F(NotificationCentre, ANameHearsThatNameAlone) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    post("DuplexChanged");
    post("paperChanged");
    EXPECT_EQ(heard, Words());
}

TEST_F(NotificationCentre, AnEmptyNameHearsEveryName) {
    centre.addObserver(first, "", nullptr, noteAs("first"));
    post("PaperChanged");
    post("DuplexChanged");
    EXPECT_EQ(heard, Words({"first:PaperChanged", "first:DuplexChanged"}));
}

TEST_F(NotificationCentre, ASenderIsHeardAlone) {
    centre.addObserver(first, "PaperChanged", &sender, noteAs("first"));
    post("PaperChanged", &otherSender);
    post("PaperChanged", nullptr);
    EXPECT_EQ(heard, Words());
    post("PaperChanged", &sender);
    EXPECT_EQ(heard, Words({"first:PaperChanged"}));
}

TEST_F(NotificationCentre, ANullSenderHearsEverySender) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    post("PaperChanged", &sender);
    post("PaperChanged", &otherSender);
    post("PaperChanged", nullptr);
    EXPECT_EQ(heard.size(), 3u);
}

TEST_F(NotificationCentre, HandsOnSenderAndInfo) {
    Notification delivered;
    centre.addObserver(first, "", nullptr, [&](const Notification& notification) { delivered = notification; });
    centre.post({.name = "PaperChanged", .sender = &sender, .userInfo = ValueMap{{"size", Value(4)}}});
    EXPECT_EQ(delivered.sender, &sender);
    ASSERT_TRUE(delivered.userInfo);
    EXPECT_EQ(valueInMap(*delivered.userInfo, "size"), Value(4));
}

TEST_F(NotificationCentre, AnObserverThatWasAddedTwiceHearsTwice) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("again"));
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"first:PaperChanged", "again:PaperChanged"}));
}

TEST_F(NotificationCentre, RemovingAnObserverEndsAllItsObservations) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    centre.addObserver(first, "DuplexChanged", &sender, noteAs("first"));
    centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    centre.removeObserver(first.get());
    post("PaperChanged");
    post("DuplexChanged", &sender);
    EXPECT_EQ(heard, Words({"second:PaperChanged"}));
}

TEST_F(NotificationCentre, RemovingOneObservationKeepsTheOthers) {
    centre.addObserver(first, "PaperChanged", &sender, noteAs("narrow"));
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("any sender"));
    centre.addObserver(first, "DuplexChanged", &sender, noteAs("other name"));
    centre.addObserver(second, "PaperChanged", &sender, noteAs("other observer"));
    centre.removeObserver(first.get(), "PaperChanged", &sender);
    post("PaperChanged", &sender);
    post("DuplexChanged", &sender);
    EXPECT_EQ(heard, Words({"any sender:PaperChanged", "other observer:PaperChanged", "other name:DuplexChanged"}));
}

TEST_F(NotificationCentre, ADeadObserverHearsNothing) {
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    first.reset();
    post("PaperChanged");
    EXPECT_EQ(heard, Words());
}

TEST_F(NotificationCentre, KeepsNoObserverAlive) {
    const std::weak_ptr<const void> watched = first;
    centre.addObserver(first, "PaperChanged", nullptr, noteAs("first"));
    first.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(NotificationCentre, HoldsAnObserverWhileItIsCalled) {
    const std::weak_ptr<const void> watched = first;
    bool alive = false;
    centre.addObserver(first, "PaperChanged", nullptr, [&](const Notification&) {
        first.reset();
        alive = !watched.expired();
    });
    post("PaperChanged");
    EXPECT_TRUE(alive);
    EXPECT_TRUE(watched.expired());
}

TEST_F(NotificationCentre, AnObserverMayRemoveItselfFromItsDestructorDuringDelivery) {
    struct Leaving {
        NotificationCenter& centre;
        ~Leaving() { centre.removeObserver(this); }
    };
    auto leaving = std::make_shared<Leaving>(centre);
    centre.addObserver(leaving, "PaperChanged", nullptr, [&](const Notification&) {
        heard.emplace_back("leaving");
        leaving.reset();
    });
    centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    post("PaperChanged");
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"leaving", "second:PaperChanged", "second:PaperChanged"}));
}

TEST_F(NotificationCentre, AnObserverRemovedDuringDeliveryNoLongerHears) {
    centre.addObserver(first, "PaperChanged", nullptr,
                       [this](const Notification&) { centre.removeObserver(second.get()); });
    centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    post("PaperChanged");
    EXPECT_EQ(heard, Words());
}

TEST_F(NotificationCentre, AnObserverAddedDuringDeliveryHearsTheNextOne) {
    centre.addObserver(first, "PaperChanged", nullptr, [this](const Notification&) {
        centre.removeObserver(first.get());
        centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    });
    post("PaperChanged");
    EXPECT_EQ(heard, Words());
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"second:PaperChanged"}));
}

TEST_F(NotificationCentre, AHandlerMayRemoveItsOwnObserver) {
    const auto kept = std::make_shared<std::string>("kept with the handler");
    centre.addObserver(first, "PaperChanged", nullptr, [this, text = *kept](const Notification&) {
        centre.removeObserver(first.get());
        heard.push_back(text);
    });
    post("PaperChanged");
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"kept with the handler"}));
}

TEST_F(NotificationCentre, APostWithinADeliveryIsDeliveredFirst) {
    centre.addObserver(first, "PaperChanged", nullptr, [this](const Notification&) { post("DuplexChanged"); });
    centre.addObserver(second, "", nullptr, noteAs("second"));
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"second:DuplexChanged", "second:PaperChanged"}));
}

TEST_F(NotificationCentre, AnExceptionEndsTheDeliveryAndReachesThePoster) {
    centre.addObserver(first, "PaperChanged", nullptr, [](const Notification&) { throw Exception("refused"); });
    centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    EXPECT_THROW(post("PaperChanged"), Exception);
    EXPECT_EQ(heard, Words());
}

TEST_F(NotificationCentre, DeliversAgainAfterAnException) {
    bool raises = true;
    centre.addObserver(first, "PaperChanged", nullptr, [&](const Notification&) {
        if (raises)
            throw std::runtime_error("once");
    });
    centre.addObserver(second, "PaperChanged", nullptr, noteAs("second"));
    EXPECT_THROW(post("PaperChanged"), std::runtime_error);
    raises = false;
    post("PaperChanged");
    EXPECT_EQ(heard, Words({"second:PaperChanged"}));
}

TEST_F(NotificationCentre, TheDefaultCentreIsOne) {
    EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

} // namespace
} // namespace toolkit
