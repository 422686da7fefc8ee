#include "platform/foundation/NSNotificationCenter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <vector>

namespace {

class Observer : public NSObject {
 public:
    explicit Observer(std::function<void(const NSNotification&)> action = {})
        : action_(std::move(action)) {}
    void received(const NSNotification& notification) {
        ++count;
        last = notification;
        if (action_) action_(notification);
    }
    int count = 0;
    NSNotification last;

 private:
    std::function<void(const NSNotification&)> action_;
};

class NotificationCenter : public testing::Test {
 protected:
    std::shared_ptr<Observer> observe(std::function<void(const NSNotification&)> action = {}) {
        auto observer = std::make_shared<Observer>(std::move(action));
        add(observer);
        return observer;
    }
    void add(const std::shared_ptr<Observer>& observer, const NSString& name = "volume",
             const NSObject* object = nullptr) {
        center.addObserver(observer, &Observer::received, name, object);
    }
    void post() { center.postNotificationName("volume", nullptr); }

    NSNotificationCenter center;
};

TEST_F(NotificationCenter, DeliversNameSenderAndInformation) {
    const auto observer = observe();
    const auto sender = std::make_shared<NSObject>();
    const PropertyValue info(PropertyValue::Dictionary{{"a", PropertyValue(1)}});
    center.postNotificationName("volume", sender.get(), info);
    EXPECT_EQ(observer->count, 1);
    EXPECT_EQ(observer->last.name, "volume");
    EXPECT_EQ(observer->last.object, sender.get());
    EXPECT_EQ(observer->last.userInfo, info);
}

TEST_F(NotificationCenter, DeliversOnlyTheNameAndSenderAskedFor) {
    const auto sender = std::make_shared<NSObject>();
    const auto other = std::make_shared<NSObject>();
    const auto ofSender = std::make_shared<Observer>();
    const auto ofEverything = std::make_shared<Observer>();
    add(ofSender, "volume", sender.get());
    add(ofEverything, std::nullopt);
    center.postNotificationName("volume", sender.get());
    center.postNotificationName("volume", other.get());
    center.postNotificationName("volume", nullptr);
    center.postNotificationName("route", sender.get());
    EXPECT_EQ(ofSender->count, 1);
    EXPECT_EQ(ofEverything->count, 4);
}

TEST_F(NotificationCenter, DistinguishesTheEmptyNameFromAnyName) {
    const auto observer = std::make_shared<Observer>();
    add(observer, "");
    post();
    EXPECT_EQ(observer->count, 0);
    center.postNotificationName("", nullptr);
    EXPECT_EQ(observer->count, 1);
}

TEST_F(NotificationCenter, DeliversInTheOrderOfRegistration) {
    std::vector<int> order;
    std::vector<std::shared_ptr<Observer>> observers;
    for (int i = 0; i < 20; ++i) {
        observers.push_back(observe([&order, i](const NSNotification&) { order.push_back(i); }));
    }
    post();
    ASSERT_EQ(order.size(), 20U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(NotificationCenter, IgnoresANullObserverAndAnEmptyHandler) {
    center.add(
        nullptr, [](const NSNotification&) { FAIL(); }, "volume", nullptr);
    center.add(std::make_shared<NSObject>(), nullptr, "volume", nullptr);
    post();
    center.removeObserver(nullptr);
}

TEST_F(NotificationCenter, GivesAnObserverAddedDuringADeliveryTheNextOne) {
    const auto late = std::make_shared<Observer>();
    const auto first = observe([&](const NSNotification&) {
        if (late->count == 0 && late.use_count() == 1) add(late);
    });
    post();
    EXPECT_EQ(late->count, 0);
    center.removeObserver(first.get());
    post();
    EXPECT_EQ(late->count, 1);
}

TEST_F(NotificationCenter, DoesNotCallAnObserverRemovedBeforeItsTurn) {
    std::shared_ptr<Observer> second;
    const auto first = observe([&](const NSNotification&) { center.removeObserver(second.get()); });
    second = observe();
    const auto third = observe();
    post();
    EXPECT_EQ(second->count, 0);
    EXPECT_EQ(third->count, 1);
}

TEST_F(NotificationCenter, DoesNotCallAnObserverDestroyedBeforeItsTurn) {
    std::shared_ptr<Observer> second;
    int calls = 0;
    const auto first = observe([&](const NSNotification&) { second.reset(); });
    second = observe([&](const NSNotification&) { ++calls; });
    post();
    post();
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(first->count, 2);
}

TEST_F(NotificationCenter, DoesNotCallAnObserverThatWasRemovedAndAddedAgainDuringTheDelivery) {
    std::shared_ptr<Observer> second;
    const auto first = observe([&](const NSNotification&) {
        center.removeObserver(second.get());
        add(second);
    });
    second = observe();
    post();
    EXPECT_EQ(second->count, 0);
    center.removeObserver(first.get());
    post();
    EXPECT_EQ(second->count, 1);
}

TEST_F(NotificationCenter, LetsAnObserverRemoveItselfWhileItIsCalled) {
    std::shared_ptr<Observer> observer;
    observer = observe([&](const NSNotification&) { center.removeObserver(observer.get()); });
    const auto next = observe();
    post();
    post();
    EXPECT_EQ(observer->count, 1);
    EXPECT_EQ(next->count, 2);
}

TEST_F(NotificationCenter, LetsAnObserverBeReleasedByItsOwnerWhileItIsCalled) {
    auto value = std::make_shared<int>(5);
    std::shared_ptr<Observer> observer;
    int seen = 0;
    observer = observe([&, value](const NSNotification&) {
        observer.reset();
        seen = *value;
    });
    post();
    EXPECT_EQ(seen, 5);
    EXPECT_EQ(value.use_count(), 1) << "what was let go of is gone once the delivery is over";
}

TEST_F(NotificationCenter, CallsAnObserverAsOftenAsItIsRegisteredAndEndsAllAtOnce) {
    const auto observer = observe();
    add(observer);
    add(observer, std::nullopt);
    post();
    EXPECT_EQ(observer->count, 3);
    center.removeObserver(observer.get());
    post();
    EXPECT_EQ(observer->count, 3);
}

TEST_F(NotificationCenter, EndsTheOtherRegistrationsOfAnObserverThatRemovesItself) {
    std::shared_ptr<Observer> observer;
    observer = observe([&](const NSNotification&) { center.removeObserver(observer.get()); });
    add(observer);
    post();
    EXPECT_EQ(observer->count, 1);
}

TEST_F(NotificationCenter, DeliversANestedNotificationBeforeTheOuterOneGoesOn) {
    std::vector<std::string> order;
    const auto first = observe([&](const NSNotification& notification) {
        order.push_back("first " + notification.name);
        center.postNotificationName("route", nullptr);
    });
    const auto second = std::make_shared<Observer>([&](const NSNotification& notification) {
        order.push_back("second " + notification.name);
    });
    add(second, std::nullopt);
    post();
    EXPECT_EQ(order, (std::vector<std::string>{"first volume", "second route", "second volume"}));
}

TEST_F(NotificationCenter, DeliversTheSameNotificationPostedFromInside) {
    std::shared_ptr<Observer> observer;
    observer = observe([&](const NSNotification&) {
        if (observer->count < 3) post();
    });
    post();
    EXPECT_EQ(observer->count, 3);
}

TEST_F(NotificationCenter, LetsAnExceptionReachThePosterAndEndsTheDelivery) {
    const auto first = observe([](const NSNotification&) { throw std::out_of_range("row"); });
    const auto second = observe();
    EXPECT_THROW(post(), std::out_of_range);
    EXPECT_EQ(second->count, 0);
    center.removeObserver(first.get());
    post();
    EXPECT_EQ(second->count, 1);
}

TEST_F(NotificationCenter, TakesARemovalFromInsideADestructor) {
    struct Leaving : NSObject {
        explicit Leaving(NSNotificationCenter& c) : center(c) {}
        Leaving(const Leaving&) = delete;
        ~Leaving() override { center.removeObserver(this); }
        void received(const NSNotification&) {}
        NSNotificationCenter& center;
    };
    auto observer = std::make_shared<Leaving>(center);
    center.addObserver(observer, &Leaving::received, "volume", nullptr);
    const auto killer = observe([&](const NSNotification&) { observer.reset(); });
    post();
    post();
    EXPECT_EQ(killer->count, 2);
}

TEST_F(NotificationCenter, TakesARemovalOfAnObjectThatObservesNothing) {
    const NSObject stranger;
    const auto observer = observe();
    center.removeObserver(&stranger);
    post();
    EXPECT_EQ(observer->count, 1);
}

TEST_F(NotificationCenter, TakesAHandlerWhoseDestructionRemovesAnotherObserver) {
    const auto other = observe();
    const auto observer = std::make_shared<NSObject>();
    const std::shared_ptr<void> atEnd(nullptr, [&](void*) { center.removeObserver(other.get()); });
    center.add(
        observer, [atEnd = std::shared_ptr<void>(atEnd)](const NSNotification&) {}, "volume",
        nullptr);
    center.removeObserver(observer.get());
    post();
    EXPECT_EQ(other->count, 1);
}

TEST_F(NotificationCenter, DoesNotCallANewObserverForTheRegistrationOfAnOldOneAtItsAddress) {
    // The memory of an observer is used again as soon as the last weak reference is gone, too.
    for (int i = 0; i < 1000; ++i) {
        const auto observer = std::make_shared<Observer>();
        add(observer);
        post();
        ASSERT_EQ(observer->count, 1);
    }
}

TEST_F(NotificationCenter, ForgetsObserversThatLeftWithoutSayingSo) {
    const auto token = std::make_shared<int>(0);
    for (int i = 0; i < 10000; ++i) {
        center.add(
            std::make_shared<NSObject>(), [token](const NSNotification&) {}, "volume", nullptr);
    }
    EXPECT_LT(token.use_count(), 1000);
}

TEST_F(NotificationCenter, AddsAndRemovesManyObserversInLinearTime) {
    // A second or so of the processor's time. Were each removal a walk through all that are left,
    // it would be minutes.
    constexpr int count = 200000;
    constexpr double allowed = 20;  // Seconds.
    const std::clock_t start = std::clock();
    std::vector<std::shared_ptr<Observer>> observers;
    observers.reserve(count);
    for (int i = 0; i < count; ++i)
        observers.push_back(observe());
    post();
    // The latest first: a search from the front would pass for the other order.
    for (auto observer = observers.rbegin(); observer != observers.rend(); ++observer) {
        ASSERT_EQ((*observer)->count, 1);
        center.removeObserver(observer->get());
    }
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, allowed);
    post();
    EXPECT_EQ(observers.front()->count, 1);
    EXPECT_EQ(observers.back()->count, 1);
}

TEST_F(NotificationCenter, TellsWhetherANameIsObserved) {
    EXPECT_FALSE(center.isObserved("volume"));
    auto observer = observe();
    EXPECT_TRUE(center.isObserved("volume"));
    EXPECT_FALSE(center.isObserved("other"));
    center.removeObserver(observer.get());
    EXPECT_FALSE(center.isObserved("volume"));
    add(observer, std::nullopt);
    EXPECT_TRUE(center.isObserved("other"));
    observer.reset();
    EXPECT_FALSE(center.isObserved("other")) << "by one that is gone";
}

TEST(DefaultNotificationCenter, IsAlwaysTheSame) {
    EXPECT_EQ(&NSNotificationCenter::defaultCenter(), &NSNotificationCenter::defaultCenter());
}

}  // namespace
