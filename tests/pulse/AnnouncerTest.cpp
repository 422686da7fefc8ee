#include "backends/pulse/categories/Announcer.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

using namespace pulse;

/// In virtual time.
class AnnouncerTest : public testing::Test {
 protected:
    AnnouncerTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
        const auto record = [this](const NSNotification& notification) {
            const PropertyValue& info = notification.userInfo;
            posted.push_back(describe(
                info.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Category)
                    .string()));
            if (onPost) onPost();
        };
        NSNotificationCenter::defaultCenter().add(
            observer, record, AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
        announcer = std::make_unique<Announcer>(
            [this](const std::string& category) { return states[category]; });
        announcer->setRereadHandler([this] { posted.emplace_back("reread"); });
    }
    ~AnnouncerTest() override {
        NSNotificationCenter::defaultCenter().removeObserver(observer.get());
        announcer.reset();
        advance(1000);
        NSRunLoop::mainRunLoop().setClock({});
    }

    void advance(double milliseconds) {
        now += milliseconds / 1000;
        NSRunLoop::mainRunLoop().runDue();
    }

    /// Readable, told, and longer ago than anything settles.
    void makeKnown(const std::string& category) {
        states[category].volume = 0.5F;
        announcer->changedAtOnce();
        advance(0);
        advance(100);
        posted.clear();
    }

    using Names = std::vector<std::string>;
    double now = 1;
    std::map<std::string, CategoryState> states;
    Names posted;
    std::function<void()> onPost;
    std::shared_ptr<NSObject> observer = std::make_shared<NSObject>();
    std::unique_ptr<Announcer> announcer;
};

TEST_F(AnnouncerTest, TellsAChangeWhenItHasSettled) {
    makeKnown("Ringtone");
    states["Ringtone"].volume = 0.6F;
    announcer->changed();
    advance(9);
    EXPECT_EQ(posted, Names{});
    advance(2);
    EXPECT_EQ(posted, Names{"Ringtone"});
    advance(100);
    EXPECT_EQ(posted, Names{"Ringtone"});
}

TEST_F(AnnouncerTest, TellsNothingOfAValueThatPassed) {
    states["Ringtone"].volume = 0.5F;
    announcer->changed();
    advance(9);
    announcer->changed();
    advance(2);
    advance(38);
    states["Ringtone"].volume.reset();
    announcer->changed();
    advance(100);
    advance(100);
    EXPECT_EQ(posted, Names{});
}

TEST_F(AnnouncerTest, TellsACategoryThatSomebodyAskedForOnceItChanges) {
    announcer->answered("app:Game", {});
    states["app:Game"].volume = 0.5F;
    states["app:Other"].volume = 0.5F;
    announcer->changedAtOnce();
    advance(0);
    EXPECT_EQ(posted, Names{"app:Game"});
}

TEST_F(AnnouncerTest, TellsAPassingValueThatSomebodyWasAnswered) {
    states["Ringtone"].volume = 0.5F;
    announcer->changed();
    announcer->answered("Ringtone", states["Ringtone"]);
    states["Ringtone"].volume.reset();
    advance(100);
    EXPECT_EQ(posted, Names{"reread"});
    announcer->changed();
    advance(100);
    advance(100);
    EXPECT_EQ(posted, Names{"reread"});
}

TEST_F(AnnouncerTest, IsNotHeldUpByAFlood) {
    makeKnown("Audio/Video");
    for (int i = 1; i <= 50; ++i) {
        states["Audio/Video"].volume = static_cast<float>(i) / 100;
        announcer->changed();
        advance(1);
    }
    EXPECT_GE(posted.size(), 4U);
    EXPECT_LE(posted.size(), 5U);
}

TEST_F(AnnouncerTest, TellsAVolumeThatOnlyMovedAtOnce) {
    makeKnown("Ringtone");
    states["Ringtone"].volume = 0.6F;
    announcer->refreshed();
    EXPECT_EQ(posted, Names{}) << "told from inside the call";
    advance(0);
    EXPECT_EQ(posted, Names{"Ringtone"});
    advance(100);
    EXPECT_EQ(posted, Names{"Ringtone"});
}

TEST_F(AnnouncerTest, LetsWhatBecameReadableSettleLonger) {
    makeKnown("Ringtone");
    states["Ringtone"].volume = 0.6F;
    states["PhoneCall"].volume = 0;
    announcer->refreshed();
    advance(11);
    advance(38);
    EXPECT_EQ(posted, Names{});
    states["PhoneCall"].volume = 0.6F;
    announcer->refreshed();
    advance(2);
    EXPECT_EQ(posted, (Names{"Ringtone", "PhoneCall"}));
}

TEST_F(AnnouncerTest, LetsAnotherRouteSettleLonger) {
    makeKnown("Ringtone");
    states["Ringtone"] = {1.0F, "Headphones"};
    announcer->changed();
    advance(11);
    advance(38);
    EXPECT_EQ(posted, Names{});
    states["Ringtone"].volume = 0.7F;
    announcer->changed();
    advance(2);
    EXPECT_EQ(posted, Names{"Ringtone"});
    advance(100);
    advance(100);
    EXPECT_EQ(posted, Names{"Ringtone"});
}

TEST_F(AnnouncerTest, LetsWhatIsGoneComeBackBeforeItIsTold) {
    makeKnown("Ringtone");
    states["Ringtone"].volume.reset();
    announcer->changed();
    advance(11);
    states["Ringtone"].volume = 0.5F;
    announcer->changed();
    advance(40);
    advance(100);
    EXPECT_EQ(posted, Names{});
}

TEST_F(AnnouncerTest, TellsTheNextMoveWhenTheLastHasSettled) {
    makeKnown("Ringtone");
    states["Ringtone"].volume = 0.6F;
    announcer->refreshed();
    advance(0);
    states["Ringtone"].volume = 0.7F;
    announcer->refreshed();
    advance(9);
    EXPECT_EQ(posted.size(), 1U);
    advance(2);
    EXPECT_EQ(posted.size(), 2U);
}

TEST_F(AnnouncerTest, TellsAFloodOfMovesEverySoOften) {
    makeKnown("Ringtone");
    for (int i = 1; i <= 50; ++i) {
        states["Ringtone"].volume = static_cast<float>(i) / 100;
        announcer->refreshed();
        advance(1);
    }
    EXPECT_GE(posted.size(), 5U);
    EXPECT_LE(posted.size(), 6U);
}

TEST_F(AnnouncerTest, TellsEachCategoryThatChangedAndNoOther) {
    states["Ringtone"].volume = 0.5F;
    states["PhoneCall"].volume = 0.5F;
    announcer->changedAtOnce();
    EXPECT_EQ(posted, Names{}) << "told from inside the call";
    advance(0);
    EXPECT_EQ(posted, (Names{"Ringtone", "PhoneCall"}));
}

TEST_F(AnnouncerTest, TellsMediaAfterTheRingtoneThatMayBeBoundToIt) {
    announcer->answered("app:Game", {});
    for (const char* category : {"app:Game", "Audio/Video", "Ringtone"})
        states[category].volume = 0.5F;
    announcer->changedAtOnce();
    advance(0);
    EXPECT_EQ(posted, (Names{"Ringtone", "Audio/Video", "app:Game"}));
}

TEST_F(AnnouncerTest, AsksOnceForARereadWhateverTheNumberOfUnreadableCategories) {
    states["Ringtone"].volume = 0.5F;
    states["Audio/Video"].volume = 0.5F;
    announcer->changedAtOnce();
    advance(0);
    posted.clear();
    states.clear();
    announcer->changedAtOnce();
    advance(0);
    EXPECT_EQ(posted, Names{"reread"});
}

TEST_F(AnnouncerTest, MayBeDestroyedByAnObserver) {
    states["Ringtone"].volume = 0.5F;
    states["PhoneCall"].volume = 0.5F;
    onPost = [this] { announcer.reset(); };
    announcer->changedAtOnce();
    advance(100);
    EXPECT_EQ(posted, Names{"Ringtone"});
}

TEST_F(AnnouncerTest, MayBeDestroyedByTheRereadHandler) {
    states["Ringtone"] = {std::nullopt, "HDMI"};
    announcer->setRereadHandler([this] {
        announcer.reset();
        posted.emplace_back("reread");
    });
    announcer->changedAtOnce();
    advance(100);
    EXPECT_EQ(posted, Names{"reread"});
}

TEST_F(AnnouncerTest, TellsTheRestAfterAnObserverThrew) {
    states["Ringtone"].volume = 0.5F;
    states["PhoneCall"].volume = 0.5F;
    onPost = [] { throw std::out_of_range("row"); };
    announcer->changedAtOnce();
    EXPECT_THROW(advance(0), std::out_of_range);
    onPost = {};
    advance(0);
    EXPECT_EQ(posted, (Names{"Ringtone", "PhoneCall"}));
}
