#include "backends/pulse/mirror/MirrorReader.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

using namespace pulse;

/// In virtual time.
class RolePollerTest : public testing::Test {
 protected:
    RolePollerTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
        mirror.server.pipeWire = Version{0, 3, 65};
    }
    ~RolePollerTest() override {
        stopObserving();
        poller.stop();
        advance(1);
        NSRunLoop::mainRunLoop().setClock({});
    }

    void advance(double seconds) {
        now += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }
    void observe() {
        NSNotificationCenter::defaultCenter().add(
            observer, [](const NSNotification&) {},
            AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
    }
    void stopObserving() { NSNotificationCenter::defaultCenter().removeObserver(observer.get()); }

    double now = 100;
    int polls = 0;
    ServerMirror mirror;
    RolePoller poller{mirror, [this] { ++polls; }};
    std::shared_ptr<NSObject> observer = std::make_shared<NSObject>();
};

TEST_F(RolePollerTest, PollsAtTheFirstLookAndFourTimesASecondWhileSomebodyObserves) {
    observe();
    poller.lookedAt();
    EXPECT_EQ(polls, 1);
    advance(0.24);
    EXPECT_EQ(polls, 1);
    advance(0.02);
    EXPECT_EQ(polls, 2);
    advance(0.26);
    EXPECT_EQ(polls, 3);
}

TEST_F(RolePollerTest, DoesNotPollMoreOftenHoweverOftenItIsLookedAt) {
    observe();
    for (int i = 0; i < 100; ++i) {
        poller.lookedAt();
        advance(0.01);
    }
    EXPECT_GE(polls, 4);
    EXPECT_LE(polls, 5);
}

TEST_F(RolePollerTest, LetsTheLoopRestOnceNobodyObserves) {
    poller.lookedAt();
    advance(0.3);
    EXPECT_EQ(polls, 1);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt);
    observe();
    poller.lookedAt();
    advance(0.3);
    EXPECT_EQ(polls, 3);
    stopObserving();
    advance(0.3);
    EXPECT_EQ(polls, 3);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt);
}

TEST_F(RolePollerTest, LetsTheLoopRestWhileNobodyLooksThoughSomebodyObserves) {
    observe();
    poller.lookedAt();
    poller.setAttention(RolePoller::Attention::Resting);
    advance(1);
    EXPECT_EQ(polls, 1);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt);
    poller.lookedAt();
    EXPECT_EQ(polls, 2) << "one answer for one look";
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt);
    advance(1);
    poller.setAttention(RolePoller::Attention::Watched);
    EXPECT_EQ(polls, 3) << "what is known is old";
    advance(0.3);
    EXPECT_EQ(polls, 4);
}

TEST_F(RolePollerTest, DoesNotPollAServerThatAnnouncesByItself) {
    observe();
    for (const auto& announcing : {std::optional<Version>(), std::optional(Version{1, 2, 0})}) {
        mirror.server.pipeWire = announcing;
        poller.lookedAt();
    }
    EXPECT_EQ(polls, 0);
    mirror.server.pipeWire = Version{1, 1, 99};
    poller.lookedAt();
    EXPECT_EQ(polls, 1);
}

TEST_F(RolePollerTest, StopsAtOnce) {
    observe();
    poller.lookedAt();
    poller.stop();
    advance(1);
    EXPECT_EQ(polls, 1);
}
