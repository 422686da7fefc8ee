#include "shells/common/Installation.hpp"
#include "tests/desktop/XfcePanel.hpp"
#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <cmath>

namespace test {
namespace {

/// The mixer's icon in the tray of a real panel, and the drawer beside it.
class TrayTest : public testing::Test {
 protected:
    TrayTest() {
        session.sound.startAndWait();
        session.sound.pactl({"set-sink-volume", "spk", "50%"});
        session.user.moveTo(640, 880);
        panel.emplace(session);
        const ScreenPicture before = session.screen.picture();
        mixer = session.startMixer({"--background"});
        icon = panel->waitForIcon(before);
        waitForIconToRest();
    }

    /// It changes once the volume is known.
    void waitForIconToRest() {
        ScreenPicture last = session.screen.picture();
        EXPECT_TRUE(rigs::waitUntil([&] {
            rigs::runFor(0.2);
            ScreenPicture now = session.screen.picture();
            const bool rests = now.difference(last).size.width == 0;
            last = std::move(now);
            return rests;
        }));
    }
    void clickIcon() {
        session.user.moveTo(icon.x, icon.y);
        session.user.click();
    }
    /// Answers what has changed with it, the panel's highlighting too.
    CGRect openMenu() {
        session.user.moveTo(icon.x, icon.y);
        const ScreenPicture before = session.screen.picture();
        session.user.click(3);
        CGRect menu;
        EXPECT_TRUE(rigs::waitUntil([&] {
            menu = session.screen.picture().difference(before);
            return CGRectGetMaxY(menu) > XfcePanel::thickness + 40;
        }));
        return menu;
    }
    int percent() const {
        constexpr double fullVolume = 65536;
        return static_cast<int>(
            std::lround(session.sound.sinkVolumes("spk").front() * 100 / fullVolume));
    }
    bool waitForPercent(int wanted) {
        return rigs::waitUntil([&] { return percent() == wanted; });
    }
    bool waitForMute(const std::string& answer) {
        return rigs::waitUntil([&] {
            return session.sound.pactl({"get-sink-mute", "spk"}) == "Mute: " + answer + "\n";
        });
    }
    /// The middle of the second row's thumb, which is all that is white that far below the track.
    CGPoint mediaThumb(const CGRect& drawer) const {
        constexpr CGFloat trackBelowTop = 95;
        constexpr CGFloat belowTrack = 8;
        constexpr CGFloat imagesAtTheEnds = 44;
        const CGFloat y = drawer.origin.y + trackBelowTop;
        const double x = session.screen.picture().middleOfWhite(
            static_cast<double>(y + belowTrack),
            static_cast<double>(drawer.origin.x + imagesAtTheEnds),
            static_cast<double>(CGRectGetMaxX(drawer) - imagesAtTheEnds));
        return {static_cast<CGFloat>(x), y};
    }
    /// The image at the right end is wider.
    static CGFloat trackMiddle(const CGRect& drawer) { return CGRectGetMidX(drawer) - 2.5F; }
    /// Painted, too.
    CGRect waitForDrawer() {
        const CGRect drawer = session.waitForWindow();
        EXPECT_TRUE(rigs::waitUntil([&] { return mediaThumb(drawer).x > 0; }));
        return drawer;
    }

    UserSession session;
    std::optional<XfcePanel> panel;
    ChildProcess mixer;
    CGPoint icon;
};

TEST_F(TrayTest, BeginsHiddenWithItsIconInThePanel) {
    EXPECT_TRUE(session.screen.windowsOf(shell::applicationId).empty());
    session.screen.picture().keep("tray-icon");
}

TEST_F(TrayTest, ClickShowsTheDrawerBesideTheIconAndTheNextOneHidesIt) {
    clickIcon();
    const CGRect drawer = waitForDrawer();
    session.screen.picture().keep("tray-drawer");
    EXPECT_EQ(drawer.size, (CGSize{560, 270}));
    EXPECT_GE(drawer.origin.y, XfcePanel::thickness) << "it covers the panel";
    EXPECT_LE(drawer.origin.y, XfcePanel::thickness + 30) << "it is far from the icon";
    EXPECT_LE(CGRectGetMaxX(drawer), 1280);
    EXPECT_GT(CGRectGetMaxX(drawer), icon.x);
    clickIcon();
    EXPECT_TRUE(session.waitForNoWindow());
    clickIcon();
    EXPECT_EQ(waitForDrawer(), drawer);
}

TEST_F(TrayTest, DrawerOpensAtTheSamePlaceWhereverInTheIconItWasClicked) {
    clickIcon();
    const CGRect drawer = waitForDrawer();
    EXPECT_EQ(drawer.origin.y, CGRectGetMaxY(panel->place()) + 8)
        << "below the panel, not the click";
    for (const CGPoint& corner :
         {CGPoint{-8, -10}, CGPoint{8, -10}, CGPoint{-8, 10}, CGPoint{8, 10}}) {
        clickIcon();
        EXPECT_TRUE(session.waitForNoWindow());
        session.user.moveTo(icon.x + corner.x, icon.y + corner.y);
        session.user.click();
        EXPECT_EQ(waitForDrawer(), drawer);
    }
}

TEST_F(TrayTest, MenuOpensTheDrawerWhereTheIconDoes) {
    const CGRect menu = openMenu();
    session.user.moveTo(menu.origin.x + 20, XfcePanel::thickness + 14);
    session.user.click();
    const CGRect drawer = waitForDrawer();
    session.screen.picture().keep("tray-drawer-by-menu");
    session.user.typeKey(XK_Escape);
    EXPECT_TRUE(session.waitForNoWindow());
    clickIcon();
    EXPECT_EQ(waitForDrawer(), drawer);
}

// The panel takes a release that comes alone for a click.
TEST_F(TrayTest, SlowClickOnTheIconHidesTheDrawerForGood) {
    clickIcon();
    waitForDrawer();
    session.user.moveTo(icon.x, icon.y);
    session.user.press();
    rigs::runFor(0.15);
    session.user.release();
    EXPECT_TRUE(session.waitForNoWindow());
    rigs::runFor(0.5);
    EXPECT_TRUE(session.screen.windowsOf(shell::applicationId).empty());
}

TEST_F(TrayTest, DragInTheDrawerSetsTheServersVolume) {
    clickIcon();
    const CGRect drawer = waitForDrawer();
    ASSERT_TRUE(rigs::waitUntil([&] {
        return std::abs(mediaThumb(drawer).x - trackMiddle(drawer)) < 2;
    })) << "at 50 % it is in the middle";
    const CGPoint thumb = mediaThumb(drawer);
    session.user.moveTo(thumb.x, thumb.y);
    session.user.press();
    session.user.moveTo(thumb.x + 50, thumb.y);
    session.user.moveTo(thumb.x + 110, thumb.y);
    EXPECT_TRUE(waitForPercent(75)) << percent();
    session.screen.picture().keep("tray-drag");
    session.user.release();
    // Held, the thumb is shaded: it is white once its release has been painted.
    EXPECT_TRUE(
        rigs::waitUntil([&] { return std::abs(mediaThumb(drawer).x - thumb.x - 110) <= 2; }));
    EXPECT_FALSE(session.screen.windowsOf(shell::applicationId).empty());
}

TEST_F(TrayTest, WheelOverTheIconChangesTheVolumeAndTheIcon) {
    const ScreenPicture atHalf = session.screen.picture();
    session.user.moveTo(icon.x, icon.y);
    session.user.scrollUp();
    EXPECT_TRUE(waitForPercent(55)) << percent();
    session.user.scrollDown();
    session.user.scrollDown();
    EXPECT_TRUE(waitForPercent(45)) << percent();
    for (int i = 0; i < 9; ++i)
        session.user.scrollDown();
    EXPECT_TRUE(waitForPercent(0)) << percent();
    session.user.scrollDown();
    session.user.moveTo(640, 880);
    const auto hasOtherIcon = [&] {
        const CGRect changed = session.screen.picture().difference(atHalf);
        return changed.size.width > 3 && CGRectGetMaxY(changed) <= XfcePanel::thickness;
    };
    EXPECT_TRUE(rigs::waitUntil(hasOtherIcon)) << "the icon of silence is another";
    session.screen.picture().keep("tray-silent");
    EXPECT_EQ(percent(), 0);
}

TEST_F(TrayTest, WheelMovesTheThumbOfAnOpenDrawer) {
    clickIcon();
    const CGRect drawer = waitForDrawer();
    ASSERT_TRUE(
        rigs::waitUntil([&] { return std::abs(mediaThumb(drawer).x - trackMiddle(drawer)) < 2; }));
    session.sound.pactl({"set-sink-volume", "spk", "80%"});
    EXPECT_TRUE(
        rigs::waitUntil([&] { return mediaThumb(drawer).x > CGRectGetMidX(drawer) + 100; }));
}

TEST_F(TrayTest, MiddleClickSilencesAndRestores) {
    session.user.moveTo(icon.x, icon.y);
    session.user.click(2);
    EXPECT_TRUE(waitForMute("yes"));
    EXPECT_EQ(percent(), 50) << "which it keeps";
    session.user.click(2);
    EXPECT_TRUE(waitForMute("no"));
    EXPECT_EQ(percent(), 50);
}

TEST_F(TrayTest, WheelEndsSilenceAtTheVolumeThatItKept) {
    session.sound.pactl({"set-sink-mute", "spk", "1"});
    waitForIconToRest();
    session.user.moveTo(icon.x, icon.y);
    session.user.scrollUp();
    EXPECT_TRUE(waitForPercent(55)) << percent();
    EXPECT_TRUE(waitForMute("no"));
}

TEST_F(TrayTest, EscapeHidesTheDrawerAndTheIconStays) {
    clickIcon();
    waitForDrawer();
    session.user.typeKey(XK_Escape);
    EXPECT_TRUE(session.waitForNoWindow());
    EXPECT_FALSE(mixer.hasEnded());
    clickIcon();
    waitForDrawer();
}

TEST_F(TrayTest, PressOutsideHidesTheDrawer) {
    clickIcon();
    const CGRect drawer = waitForDrawer();
    // The pointer is taken as soon as the panel lets go of it.
    ASSERT_TRUE(rigs::waitUntil([&] {
        session.user.moveTo(drawer.origin.x - 20, CGRectGetMaxY(drawer) + 20);
        session.user.click();
        return session.screen.windowsOf(shell::applicationId).empty();
    }));
    EXPECT_FALSE(mixer.hasEnded());
}

TEST_F(TrayTest, MenuHasAWayToQuit) {
    const CGRect menu = openMenu();
    session.screen.picture().keep("tray-menu");
    session.user.moveTo(CGRectGetMaxX(menu) - 40, CGRectGetMaxY(menu) - 14);
    session.user.click();
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
}

TEST_F(TrayTest, ComesBackWithThePanel) {
    const ScreenPicture before = session.screen.picture();
    panel->end();
    panel.emplace(session);
    const auto iconIsBack = [&] {
        const ScreenPicture now = session.screen.picture();
        for (double x = icon.x - 12; x < icon.x + 12; ++x)
            if (now.at(x, icon.y) != before.at(x, icon.y)) return false;
        return true;
    };
    EXPECT_TRUE(rigs::waitUntil(iconIsBack));
    clickIcon();
    EXPECT_EQ(waitForDrawer().size, (CGSize{560, 270}));
}

}  // namespace
}  // namespace test
