#include "tests/desktop/UserSession.hpp"
#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <csignal>

namespace test {
namespace {

/// The mixer's window in a session whose user has decided nothing on outputs for roles.
class OfferTest : public testing::Test {
 protected:
    OfferTest() {
        session.folder.writeOutputs("undecided");
        session.sound.beAsInASession();
        session.sound.startAndWait();
        session.sound.pactl({"set-sink-volume", "spk", "50%"});
    }
    void startUntilOffered() {
        mixer = session.startMixer({});
        ASSERT_TRUE(waitForHeight(rows + offer)) << session.logged();
    }
    bool waitForHeight(double height) const {
        return rigs::waitUntil([&] { return session.waitForWindow().size.height == height; });
    }
    /// The button is in its place once it has been painted.
    void pressAccept() {
        const CGRect window = session.waitForWindow();
        const CGPoint button = {CGRectGetMidX(window) - 180, CGRectGetMaxY(window) - 14 - 18};
        ASSERT_TRUE(rigs::waitUntil([&] {
            return (session.user.pixelAt(button.x, button.y) & 0xFFU) > 0xC0U;
        })) << "its plate is light";
        session.user.moveTo(button.x, button.y);
        session.user.click();
    }
    bool hasOutputsForRoles() const {
        const std::string sinks = session.sound.pactl({"list", "short", "sinks"});
        return sinks.find("role.multimedia") != std::string::npos &&
               sinks.find("role.notification") != std::string::npos;
    }
    void expectNoOfferAtTheNextStart() {
        mixer.signal(SIGTERM);
        mixer.wait();
        mixer = session.startMixer({});
        session.waitForWindow();
        rigs::runFor(0.5);
        EXPECT_EQ(session.waitForWindow().size.height, rows);
    }

    // Points.
    static constexpr double rows = 20 + 5 * 50;
    static constexpr double offer = 12 + 16 + 10 + 36 + 14;
    UserSession session;
    ChildProcess mixer;
};

TEST_F(OfferTest, KeepsMediaAndRingtoneApartByAPress) {
    startUntilOffered();
    EXPECT_FALSE(hasOutputsForRoles());
    session.screen.picture().keep("offer");
    pressAccept();
    EXPECT_TRUE(waitForHeight(rows)) << session.logged();
    EXPECT_TRUE(rigs::waitUntil([&] { return hasOutputsForRoles(); }));
    session.screen.picture().keep("offer-accepted");
    expectNoOfferAtTheNextStart();
    EXPECT_TRUE(hasOutputsForRoles());
}

TEST_F(OfferTest, FinishesTheSwitchBeforeTheMixerEnds) {
    startUntilOffered();
    pressAccept();
    session.user.typeKey(XK_Escape);
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
    EXPECT_TRUE(hasOutputsForRoles());
    const std::string stored = session.folder.outputs();
    EXPECT_NE(stored.find("choice=apart"), std::string::npos) << stored;
    EXPECT_NE(stored.find("phase=up"), std::string::npos) << stored;
}

TEST_F(OfferTest, DeclinedByTheKeyboardIsNotMadeAgain) {
    startUntilOffered();
    const CGRect window = session.waitForWindow();
    session.user.moveTo(CGRectGetMidX(window), CGRectGetMidY(window));
    constexpr int sliders = 5;
    for (int stop = 0; stop < sliders + 2; ++stop)
        session.user.typeKey(XK_Tab);
    session.user.typeKey(XK_Return);
    EXPECT_TRUE(waitForHeight(rows));
    expectNoOfferAtTheNextStart();
    EXPECT_FALSE(hasOutputsForRoles());
}

TEST_F(OfferTest, SaysBelowTheRowsWhyItCouldNotBeDone) {
    const std::filesystem::path file = session.folder.path() / "state/tarnwick/outputs";
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "in-the-way");
    startUntilOffered();
    pressAccept();
    constexpr double noticeOfThreeLines = 3 * 14 + 8 + 36 + 14;
    EXPECT_TRUE(waitForHeight(rows + noticeOfThreeLines)) << session.waitForWindow().size.height;
    EXPECT_NE(session.logged().find("tarnwick: outputs: the choice cannot be stored"),
              std::string::npos)
        << session.logged();
    EXPECT_FALSE(hasOutputsForRoles());
}

TEST_F(OfferTest, IsThereAtOnceInAMixerThatBeganHidden) {
    mixer = session.startMixer({"--background"});
    ASSERT_TRUE(rigs::waitUntil([&] {
        return session.logged().find("neither a tray nor a layer shell") != std::string::npos;
    }));
    rigs::runFor(0.2);
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_EQ(session.waitForWindow().size.height, rows + offer);
}

}  // namespace
}  // namespace test
