#include "platform/uikit/Geometry.hpp"
#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/wayland/HeadlessPhoc.hpp"
#include "tests/wayland/PrivateBus.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace test {
namespace {

constexpr int scale = 2;  // pixels a point
constexpr std::uint32_t panelColour = 0x1C1C1E;
constexpr std::uint32_t leastWhite = 0xE0;

/// The drawer on a layer of a real compositor, at two pixels a point.
class LayerDrawerTest : public testing::Test {
 protected:
    LayerDrawerTest() {
        folder.writeOutputs("declined");
        sound.startAndWait();
        sound.pactl({"set-sink-volume", "spk", "50%"});
    }

    Environment environment() const {
        Environment all = compositor.environment();
        all["GDK_BACKEND"] = "wayland";
        all["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
        all["PULSE_SERVER"] = sound.address();
        all["XDG_CACHE_HOME"] = folder.path() / "cache";
        all["NO_AT_BRIDGE"] = "1";
        all["LC_ALL"] = "C.UTF-8";
        return all;
    }
    ChildProcess start(const std::vector<std::string>& arguments,
                       const Environment& environment) const {
        std::vector<std::string> words = {TARNWICK_PROGRAM, "--model", "iPad4,1"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return ChildProcess(words, {.environment = environment, .log = folder.log()});
    }
    ChildProcess start(const std::vector<std::string>& arguments = {}) const {
        return start(arguments, environment());
    }

    /// Until other starts find the one that has begun hidden.
    void waitForName() const {
        const std::vector<std::string> question = {"dbus-send",
                                                   "--bus=" + bus.address(),
                                                   "--print-reply",
                                                   "--dest=org.freedesktop.DBus",
                                                   "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus.NameHasOwner",
                                                   "string:org.tarnwick.mixer"};
        EXPECT_TRUE(rigs::waitUntil([&] {
            const std::string answer = outputOf(question, environment());
            return answer.find("boolean true") != std::string::npos;
        }));
    }

    /// Around what has the panel's colour, in points; empty when nothing has.
    CGRect panel() const {
        const Screenshot picture = compositor.screenshot();
        int left = picture.width();
        int top = picture.height();
        int right = -1;
        int bottom = -1;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.at(x, y) != panelColour) continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        if (right < 0) return {};
        return CGRectMake(inPoints(left), inPoints(top), inPoints(right + 1 - left),
                          inPoints(bottom + 1 - top));
    }
    static CGFloat inPoints(int pixels) { return static_cast<CGFloat>(pixels) / scale; }

    /// The whole panel, whose hairline has another colour.
    CGRect waitForPanel() const {
        CGRect found;
        EXPECT_TRUE(rigs::waitUntil([&] {
            found = CGRectInset(panel(), -1 / CGFloat{scale}, -1 / CGFloat{scale});
            return found.size == CGSize{560, 270};
        })) << found.size.width
            << " x " << found.size.height << "\n"
            << folder.logged();
        return found;
    }
    bool waitForNoPanel() const {
        return rigs::waitUntil([this] { return panel().size.width == 0; });
    }
    /// The middle of the second row's thumb: all that is white that far below the track.
    CGPoint mediaThumb(const CGRect& drawer) const {
        const Screenshot picture = compositor.screenshot();
        const CGFloat y = drawer.origin.y + 95;
        double sum = 0;
        int count = 0;
        for (CGFloat x = drawer.origin.x + 44; x < CGRectGetMaxX(drawer) - 44; x += 0.5) {
            const std::uint32_t pixel =
                picture.at(static_cast<int>(x * scale), static_cast<int>((y + 8) * scale));
            if ((pixel & 0xFFU) < leastWhite || (pixel >> 8U & 0xFFU) < leastWhite) continue;
            sum += static_cast<double>(x);
            ++count;
        }
        return {static_cast<CGFloat>(count == 0 ? -1 : sum / count), y};
    }
    int percent() const {
        constexpr double fullVolume = 65536;
        return static_cast<int>(std::lround(sound.sinkVolumes("spk").front() * 100 / fullVolume));
    }
    /// There is no keyboard before: it is given some time to be noticed before the key comes.
    void typeEscape() const { outputOf({"wtype", "-s", "500", "-k", "Escape"}, environment()); }
    void keep(const std::string& name) const {
        const std::filesystem::path evidence = TARNWICK_EVIDENCE_DIR;
        std::filesystem::create_directories(evidence);
        compositor.saveScreenshot(evidence / (name + ".png"));
    }
    CGRect screen() const {
        return CGRectMake(0, 0, static_cast<CGFloat>(compositor.width()),
                          static_cast<CGFloat>(compositor.height()));
    }

    rigs::ServerFolder folder;
    HeadlessPhoc compositor{folder, {.width = 1600, .height = 1000, .scale = scale}};
    PrivateBus bus{folder};
    rigs::PulseAudioServer sound{folder};
};

TEST_F(LayerDrawerTest, HangsFromTheUpperEdgeInItsMiddle) {
    const ChildProcess mixer = start();
    const CGRect drawer = waitForPanel();
    keep("layer-top");
    EXPECT_EQ(drawer.origin.y, 8);
    EXPECT_EQ(CGRectGetMidX(drawer), CGRectGetMidX(screen()));
}

TEST_F(LayerDrawerTest, ZoomsWithTheDesktopsTextScaleAndKeepsItsMargin) {
    const ChildProcess mixer = start();
    waitForPanel();
    outputOf({"gsettings", "set", "org.gnome.desktop.interface", "text-scaling-factor", "1.25"},
             environment());
    // The smoothed pixels of a corner may have the panel's colour by chance.
    const auto isAbout = [](CGFloat one, CGFloat other) { return std::abs(one - other) <= 0.5; };
    CGRect drawer;
    EXPECT_TRUE(rigs::waitUntil([&] {
        drawer = CGRectInset(panel(), -1 / CGFloat{scale}, -1 / CGFloat{scale});
        return isAbout(drawer.size.width, 700) && isAbout(drawer.size.height, 338) &&
               isAbout(drawer.origin.y, 8);
    })) << drawer.size.width
        << " x " << drawer.size.height << " at " << drawer.origin.y << folder.logged();
    EXPECT_NEAR(CGRectGetMidX(drawer), CGRectGetMidX(screen()), 0.5);
}

TEST_F(LayerDrawerTest, IsWholeWhateverMarginIsAskedFor) {
    const ChildProcess mixer = start({"--margin", "300"});
    CGRect drawer;
    EXPECT_TRUE(rigs::waitUntil([&] {
        drawer = CGRectInset(panel(), -1 / CGFloat{scale}, -1 / CGFloat{scale});
        return drawer.size == CGSize{470, 170};
    })) << drawer.size.width
        << " x " << drawer.size.height;
    EXPECT_EQ(drawer.origin, (CGPoint{165, 165}));
}

TEST_F(LayerDrawerTest, HangsFromTheEdgeThatIsAskedForWithTheMarginThatIsAskedFor) {
    for (const std::string edge : {"bottom", "left", "right"}) {
        const ChildProcess mixer = start({"--anchor", edge, "--margin", "20"});
        const CGRect drawer = waitForPanel();
        keep("layer-" + edge);
        if (edge == "bottom") {
            EXPECT_EQ(CGRectGetMaxY(drawer), CGRectGetMaxY(screen()) - 20);
            EXPECT_EQ(CGRectGetMidX(drawer), CGRectGetMidX(screen()));
            continue;
        }
        if (edge == "left")
            EXPECT_EQ(drawer.origin.x, 20);
        else
            EXPECT_EQ(CGRectGetMaxX(drawer), CGRectGetMaxX(screen()) - 20);
        EXPECT_NEAR(CGRectGetMidY(drawer), CGRectGetMidY(screen()), 8) << "with its shadow";
    }
}

TEST_F(LayerDrawerTest, HangsFromTheCornerThatIsAskedFor) {
    for (const std::string corner : {"top-left", "top-right", "bottom-left", "bottom-right"}) {
        const ChildProcess mixer = start({"--anchor", corner, "--margin", "12"});
        const CGRect drawer = waitForPanel();
        keep("layer-" + corner);
        if (corner.starts_with("top"))
            EXPECT_EQ(drawer.origin.y, 12);
        else
            EXPECT_EQ(CGRectGetMaxY(drawer), CGRectGetMaxY(screen()) - 12);
        if (corner.ends_with("left"))
            EXPECT_EQ(drawer.origin.x, 12);
        else
            EXPECT_EQ(CGRectGetMaxX(drawer), CGRectGetMaxX(screen()) - 12);
    }
}

TEST_F(LayerDrawerTest, DragSetsTheServersVolume) {
    const ChildProcess mixer = start();
    const CGRect drawer = waitForPanel();
    // The image at the track's right end is wider.
    const CGFloat trackMiddle = CGRectGetMidX(drawer) - 2.5F;
    ASSERT_TRUE(rigs::waitUntil([&] { return std::abs(mediaThumb(drawer).x - trackMiddle) < 2; }));
    const CGPoint thumb = mediaThumb(drawer);
    compositor.drag(static_cast<int>(thumb.x), static_cast<int>(thumb.y),
                    static_cast<int>(thumb.x) + 110, static_cast<int>(thumb.y));
    EXPECT_TRUE(rigs::waitUntil([&] { return percent() == 75; })) << percent();
    compositor.moveTo(5, compositor.height() - 5);  // Its arrow is white too.
    EXPECT_TRUE(
        rigs::waitUntil([&] { return std::abs(mediaThumb(drawer).x - thumb.x - 110) < 2; }));
    keep("layer-dragged");
}

TEST_F(LayerDrawerTest, EscapeHidesItAndAnotherStartShowsItAgain) {
    ChildProcess mixer = start();
    const CGRect drawer = waitForPanel();
    EXPECT_TRUE(rigs::waitUntil([&] {
        typeEscape();
        return panel().size.width == 0;
    }));
    EXPECT_FALSE(mixer.hasEnded());
    EXPECT_EQ(start().wait(), 0);
    EXPECT_EQ(waitForPanel(), drawer);
    EXPECT_EQ(start().wait(), 0);
    EXPECT_TRUE(waitForNoPanel()) << "started again it toggles";
    EXPECT_EQ(start({"--quit"}).wait(), 0);
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
}

TEST_F(LayerDrawerTest, PressOutsideHidesIt) {
    ChildProcess mixer = start();
    const CGRect drawer = waitForPanel();
    const auto x = static_cast<int>(CGRectGetMidX(drawer));
    compositor.click(x, static_cast<int>(drawer.origin.y) + 5);
    rigs::runFor(0.2);
    EXPECT_EQ(panel().size.width > 0, true) << "that was inside";
    // The sheet that tells of presses comes after the first picture.
    EXPECT_TRUE(rigs::waitUntil([&] {
        compositor.click(x, static_cast<int>(CGRectGetMaxY(drawer)) + 60);
        return panel().size.width == 0;
    }));
    EXPECT_FALSE(mixer.hasEnded());
}

TEST_F(LayerDrawerTest, BeginsHiddenInTheBackground) {
    const ChildProcess mixer = start({"--background"});
    waitForName();
    EXPECT_EQ(start({"--background"}).wait(), 0);
    rigs::runFor(0.3);
    EXPECT_EQ(panel().size.width, 0);
    EXPECT_EQ(start().wait(), 0);
    waitForPanel();
}

TEST_F(LayerDrawerTest, EscapeEndsItWithoutABus) {
    Environment alone = environment();
    alone["DBUS_SESSION_BUS_ADDRESS"] = folder.environment().at("DBUS_SESSION_BUS_ADDRESS");
    ChildProcess mixer = start({}, alone);
    waitForPanel();
    EXPECT_TRUE(rigs::waitUntil([&] {
        typeEscape();
        return mixer.hasEnded();
    }));
}

TEST_F(LayerDrawerTest, ItsHairlineIsOnePixel) {
    const ChildProcess mixer = start();
    const CGRect drawer = waitForPanel();
    const Screenshot picture = compositor.screenshot();
    const auto x = static_cast<int>(CGRectGetMidX(drawer)) * scale;
    const auto top = static_cast<int>(drawer.origin.y) * scale;
    EXPECT_NE(picture.at(x, top), panelColour);
    EXPECT_EQ(picture.at(x, top + 1), panelColour);
}

}  // namespace
}  // namespace test
