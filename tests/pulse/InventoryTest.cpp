#include "tests/pulse/ServiceFixture.hpp"

#include <algorithm>
#include <optional>

// The inventory of a real server: what comes, goes and stays in it.

namespace {
// What a user takes for at once.
constexpr double promptSeconds = 0.3;
}  // namespace

class PulseInventories : public OnBothServers {
 protected:
    using Item = SoundInventory::Item;
    using State = SoundInventory::State;

    void startInventory() {
        server_->startAndWait();
        inventory_ = pulse::openInventory(server_->address());
        inventory_->setChangedHandler([this] { ++changes_; });
        ASSERT_TRUE(waitUntil([&] { return inventory_->state() == State::Ready; }));
        runFor(0.2);  // Events of the server's own start.
    }
    std::optional<Item> item(const std::string& category) const {
        for (const Item& each : inventory_->items())
            if (each.category == category) return each;
        return std::nullopt;
    }
    bool isThereAsAnItem(const std::string& category) const {
        const auto found = item(category);
        return found && found->isThereNow;
    }
    static rigs::OtherProgram::Identity identity(const std::string& name) { return {name, 4001}; }

    int changes_ = 0;
    std::shared_ptr<SoundInventory> inventory_;
};
INSTANTIATE_TEST_SUITE_P(On, PulseInventories, bothServers, serverName);

TEST_P(PulseInventories, ShowAPlayerAtOnceAndKeepItWhenItEnds) {
    startInventory();
    ASSERT_FALSE(inventory_->isThere("app:Game"));
    rigs::OtherProgram game(server_->address(), identity("Game"));
    auto sounds = game.play({});
    ASSERT_TRUE(waitUntil([&] { return isThereAsAnItem("app:Game"); }, promptSeconds));
    EXPECT_EQ(item("app:Game")->name, "Game");
    EXPECT_TRUE(inventory_->isThere("app:game"));
    EXPECT_EQ(inventory_->whatItMoves("app:game"), "Game");
    sounds.reset();
    ASSERT_TRUE(waitUntil([&] { return !isThereAsAnItem("app:Game"); }, promptSeconds));
    EXPECT_TRUE(item("app:Game"));
    EXPECT_FALSE(inventory_->isThere("app:Game"));
}

// The session manager stores it within a few seconds.
TEST_P(PulseInventories, OfferAPlayerThatEndedBeforeTheyWereOpened) {
    server_->startAndWait();
    {
        rigs::OtherProgram early(server_->address(), identity("Early Bird"));
        const auto sounds = early.play({});
        server_->pactl({"set-sink-input-volume", sounds->index(), "50%"});
        runFor(0.2);
    }
    ASSERT_TRUE(waitUntil([&] {
        inventory_ = pulse::openInventory(server_->address());
        runFor(0.3);
        return item("app:Early Bird").has_value();
    }));
    EXPECT_FALSE(isThereAsAnItem("app:Early Bird"));
}

TEST_P(PulseInventories, ShowAnOutputWhileItIsPluggedIn) {
    startInventory();
    EXPECT_FALSE(item("sink:usb"));
    EXPECT_FALSE(inventory_->isThere("sink:usb"));
    const std::string plugged = server_->loadSink("usb");
    ASSERT_TRUE(waitUntil([&] { return isThereAsAnItem("sink:usb"); }, promptSeconds));
    EXPECT_TRUE(inventory_->isThere("sink:usb"));
    EXPECT_FALSE(item("source:usb.monitor")) << "an output's monitor is no input";
    server_->pactl({"unload-module", plugged});
    ASSERT_TRUE(waitUntil([&] { return !item("sink:usb"); }, promptSeconds));
    EXPECT_FALSE(inventory_->isThere("sink:usb"));
}

TEST_P(PulseInventories, SayOfEachRowWhatTheMixerReads) {
    startInventory();
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    rigs::OtherProgram game(server_->address(), identity("Game"));
    const auto sounds = game.play({});
    const auto recording = game.record();
    ASSERT_TRUE(waitUntil([&] {
        return inventory_->isThere("VideoConference") && volumeOf("VideoConference") != unreadable;
    }));
    for (const char* category :
         {"Ringtone", "Audio/Video", "HeadsetBT", "HeadphonesBT", "PhoneCall", "VideoConference",
          "app:Game", "app:Gone", "role:game", "sink:hp", "sink:gone", "sink:@REAL@",
          "sink:@DEFAULT_SINK@", "source:spk.monitor", "source:gone", "source:@DEFAULT_SOURCE@"})
        EXPECT_TRUE(waitUntil([&] {
            return inventory_->isThere(category) == (volumeOf(category) != unreadable);
        })) << category;
    EXPECT_EQ(inventory_->whatItMoves("sink:hp"), item("sink:hp")->name);
}

TEST_P(PulseInventories, TellWhenAnAnswerChangesThatIsNoItem) {
    startInventory();
    rigs::OtherProgram game(server_->address(), identity("Game"));
    const auto sounds = game.play({});
    ASSERT_TRUE(waitUntil([&] { return isThereAsAnItem("app:Game"); }));
    ASSERT_FALSE(inventory_->isThere("VideoConference"));
    changes_ = 0;
    const auto recording = game.record();
    ASSERT_TRUE(waitUntil([&] { return changes_ > 0; }, promptSeconds));
    EXPECT_TRUE(inventory_->isThere("VideoConference"));
}

TEST_P(PulseInventories, TellNothingOfVolumesAndPostNothing) {
    startInventory();
    for (const char* category : {"Ringtone", "Audio/Video", "sink:hp"})
        ASSERT_TRUE(inventory_->isThere(category));
    changes_ = 0;
    for (const char* volume : {"16384", "32768"})
        server_->pactl({"set-sink-volume", "spk", volume});
    server_->pactl({"set-sink-mute", "hp", "1"});
    runFor(0.3);
    EXPECT_EQ(changes_, 0);
    EXPECT_TRUE(posted_.empty());
}

TEST_P(PulseInventories, AreNoMixerToOtherPrograms) {
    startInventory();
    const std::string clients = server_->pactl({"list", "clients"});
    EXPECT_NE(clients.find("application.name = \"Tarnwick Settings\""), std::string::npos);
    EXPECT_EQ(clients.find("application.name = \"Tarnwick\""), std::string::npos);
    for (const Item& each : inventory_->items())
        EXPECT_NE(each.kind, SoundInventory::Kind::Application) << each.category;
}

TEST_P(PulseInventories, AreEmptyWithoutAServerAndFillAgainWithTheNextOne) {
    startInventory();
    {
        rigs::OtherProgram game(server_->address(), identity("Game"));
        const auto sounds = game.play({});
        ASSERT_TRUE(waitUntil([&] { return isThereAsAnItem("app:Game"); }));
    }
    server_->stop(SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return inventory_->state() == State::Unavailable; }));
    EXPECT_TRUE(inventory_->items().empty());
    EXPECT_FALSE(inventory_->isThere("sink:hp"));
    EXPECT_FALSE(inventory_->whatItMoves("sink:hp"));
    server_->startAndWait();
    ASSERT_TRUE(waitUntil([&] { return isThereAsAnItem("sink:hp"); }));
    EXPECT_EQ(inventory_->state(), State::Ready);
    EXPECT_TRUE(item("app:Game")) << "what has played is not forgotten";
    EXPECT_FALSE(isThereAsAnItem("app:Game"));
}

TEST_P(PulseInventories, KnowWhatPlayedBeforeTheyWereOpened) {
    server_->startAndWait();
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady(); }));
    {
        rigs::OtherProgram game(server_->address(), identity("Game"));
        const auto sounds = game.play({});
        ASSERT_TRUE(waitToRead("app:Game", 1));
    }
    ASSERT_TRUE(waitUntil([&] { return volumeOf("app:Game") == unreadable; }));
    inventory_ = pulse::openInventory(server_->address());
    ASSERT_TRUE(waitUntil([&] { return inventory_->state() == State::Ready; }));
    EXPECT_EQ(item("app:Game").has_value(), !isPipeWire());
}

TEST_P(PulseInventories, MayBeDestroyedByTheirHandlerAndBeforeTheyAreReady) {
    startInventory();
    pulse::openInventory(server_->address()).reset();
    inventory_->setChangedHandler([this] { inventory_.reset(); });
    server_->loadSink("usb");
    EXPECT_TRUE(waitUntil([&] { return !inventory_; }));
    runFor(0.1);
}
