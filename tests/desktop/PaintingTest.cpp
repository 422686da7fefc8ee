#include "platform/uikit/UIAnimator.hpp"
#include "tests/desktop/DesktopFixture.hpp"
#include "tests/desktop/XDesktop.hpp"

#include <gdk/gdkx.h>

#include <cmath>

using namespace shell;

namespace test {
namespace {

/// The text scale as the desktop's settings tell it, in 1024ths of dots per inch.
int resolutionFor(double textScale) {
    return static_cast<int>(std::lround(96 * 1024 * textScale));
}

/// What a slider's thumb may paint beyond its row, in points.
constexpr CGFloat aroundRow = 6;

class PaintingTest : public DesktopFixture {
 protected:
    void openAndWatch() {
        open();
        settle();
        watch.emplace(displayName(), gdk_x11_window_get_xid(window->host().window()));
    }
    CGRect rowRect(std::size_t row) const {
        const auto view = slider(row)->superview();
        return view->convertRectToView(view->bounds(), nullptr);
    }
    /// That something was painted, and nothing but that row.
    void expectOnlyRowPainted(std::size_t row) {
        settle();
        const std::vector<CGRect> painted = watch->take();
        EXPECT_FALSE(painted.empty());
        const CGRect allowed = CGRectInset(rowRect(row), -aroundRow, -aroundRow);
        for (const CGRect& rect : painted)
            EXPECT_EQ(CGRectIntersection(rect, allowed), rect)
                << rect.origin.x << "," << rect.origin.y << " " << rect.size.width << " x "
                << rect.size.height;
    }

    /// Puts a colour into the window that goes when something is painted there.
    void spill(std::uint32_t colour, const CGPoint& at) const {
        GdkWindow* shown = window->host().window();
        Display* display = GDK_WINDOW_XDISPLAY(shown);
        const GC pen = XCreateGC(display, GDK_WINDOW_XID(shown), 0, nullptr);
        XSetForeground(display, pen, 0xFF000000U | colour);
        XFillRectangle(display, GDK_WINDOW_XID(shown), pen, static_cast<int>(at.x),
                       static_cast<int>(at.y), 1, 1);
        XFreeGC(display, pen);
        XSync(display, False);
    }

    std::optional<PaintWatch> watch;
};

TEST_F(PaintingTest, PaintsOnlyTheRowOfAChangeMadeElsewhere) {
    openAndWatch();
    device->changeVolume("Audio/Video", 0.9F);
    ASSERT_TRUE(waitUntil([this] { return std::abs(slider(1)->value() - 90) < 0.01F; }));
    expectOnlyRowPainted(1);
}

TEST_F(PaintingTest, PaintsNothingBetweenTwoRowsThatChange) {
    open();
    settle();
    const CGRect between = rowRect(1);
    const CGPoint spot = {window->content()->bounds().size.width * 0.7,
                          between.origin.y + between.size.height / 2};
    const CGPoint onScreen = {windowOrigin().x + spot.x, windowOrigin().y + spot.y};
    constexpr std::uint32_t red = 0xFF0000;
    spill(red, spot);
    ASSERT_EQ(user->pixelAt(onScreen.x, onScreen.y), red);
    slider(0)->setValue(90, Animated::No);
    slider(3)->setValue(90, Animated::No);
    settle();
    EXPECT_EQ(user->pixelAt(onScreen.x, onScreen.y), red);
}

TEST_F(PaintingTest, PaintsOnlyTheRowThatIsDragged) {
    openAndWatch();
    const CGPoint thumb = thumbOnScreen(2);
    user->moveTo(thumb.x, thumb.y);
    user->press();
    for (int step = 1; step <= 5; ++step) {
        user->moveTo(thumb.x + step * 10, thumb.y);
        settle();
    }
    user->release();
    ASSERT_TRUE(waitUntil([this] { return !slider(2)->isHighlighted(); }));
    EXPECT_GT(slider(2)->value(), 55);
    expectOnlyRowPainted(2);
}

TEST_F(PaintingTest, PaintsNothingWhileNothingChanges) {
    openAndWatch();
    device->changeVolume("Ringtone", 0.5F);  // Where it stands.
    user->moveTo(windowOrigin().x + 100, windowOrigin().y + 100);
    user->moveTo(windowOrigin().x + 300, windowOrigin().y + 120);
    settle();
    EXPECT_TRUE(watch->take().empty());
}

TEST_F(PaintingTest, PaintsEverythingWhenItIsUncovered) {
    openAndWatch();
    gdk_window_invalidate_rect(window->host().window(), nullptr, TRUE);
    settle();
    CGRect painted;
    for (const CGRect& rect : watch->take())
        painted = CGRectUnion(painted, rect);
    EXPECT_EQ(painted, (CGRect{{0, 0}, windowSize()}));
}

TEST_F(PaintingTest, LooksAfterChangesAsItDoesPaintedAfresh) {
    open();
    const CGRect shown = {windowOrigin(), windowSize()};
    for (const CGFloat volume : {0.1, 0.9, 0.35}) {
        device->changeVolume("Ringtone", static_cast<float>(volume));
        device->changeVolume("Audio/Video", static_cast<float>(1 - volume));
        settle();
    }
    user->moveTo(thumbOnScreen(3).x, thumbOnScreen(3).y);
    user->press();
    user->moveTo(thumbOnScreen(3).x + 60, thumbOnScreen(3).y);
    user->release();
    settle();
    EXPECT_NEAR(slider(0)->value(), 35, 0.01);
    const std::vector<std::uint32_t> changed = user->pixelsIn(shown);
    gdk_window_invalidate_rect(window->host().window(), nullptr, TRUE);
    settle();
    const bool isSame = user->pixelsIn(shown) == changed;
    EXPECT_TRUE(isSame) << "a part of the window was not painted again";
}

/// Puts its subview elsewhere at every layout.
class MovingLayout : public UIView {
 public:
    void layoutSubviews() override {
        for (const auto& view : subviews())
            view->setFrame(CGRectOffset(view->frame(), 0, 20));
    }
};

TEST_F(PaintingTest, PaintsWhatALayoutMovesInTheFrameOfTheLayout) {
    open();
    const auto views = std::make_shared<MovingLayout>();
    views->setFrame(CGRectMake(0, 0, 20, 200));
    const auto mark = std::make_shared<UIView>(CGRectMake(5, 60, 10, 10));
    mark->setBackgroundColor(UIColor::greenColor());
    views->addSubview(mark);
    window->content()->addSubview(views);
    settle();
    EXPECT_EQ(user->pixelAt(windowOrigin().x + 10, windowOrigin().y + 85), 0x00FF00U);

    views->setNeedsLayout();
    waitForFrame();
    gdk_display_sync(gdk_display_get_default());
    EXPECT_EQ(mark->frame().origin.y, 100);
    EXPECT_EQ(user->pixelAt(windowOrigin().x + 10, windowOrigin().y + 105), 0x00FF00U);
    EXPECT_NE(user->pixelAt(windowOrigin().x + 10, windowOrigin().y + 85), 0x00FF00U);
    EXPECT_TRUE(window->content()->damage().empty()) << "nothing is left for another frame";
}

TEST_F(PaintingTest, EdgeIsSoftWhileACompositorRuns) {
    open();
    EXPECT_EQ(windowSize(), (CGSize{560, 270}));
    const UIEdgeInsets margins = panelMargins(PanelEdge::Soft);
    const CGSize withShadow = {560 + margins.left + margins.right,
                               270 + margins.top + margins.bottom};
    {
        const Compositor compositor(displayName());
        EXPECT_TRUE(waitUntil([&] { return windowSize() == withShadow; }));
        settle();
        EXPECT_EQ(rowsOrigin(), (CGPoint{margins.left, margins.top + 10}));
        user->moveTo(thumbOnScreen(0).x, thumbOnScreen(0).y);
        user->scrollUp();
        expectVolume("Ringtone", 0.51);
    }
    EXPECT_TRUE(waitUntil([this] { return windowSize() == CGSize{560, 270}; }));
    settle();
    EXPECT_EQ(rowsOrigin(), (CGPoint{0, 10}));
}

TEST_F(PaintingTest, CornersAreSquareWithoutACompositor) {
    open();
    const CGPoint corner = windowOrigin();
    const std::uint32_t edge = user->pixelAt(corner.x + windowSize().width / 2, corner.y);
    EXPECT_EQ(user->pixelAt(corner.x, corner.y), edge);
    EXPECT_EQ(user->pixelAt(corner.x + windowSize().width - 1, corner.y), edge);
}

TEST_F(PaintingTest, OpensWithASoftEdgeUnderACompositor) {
    const Compositor compositor(displayName());
    open();
    EXPECT_GT(windowSize().width, 560);
}

TEST_F(PaintingTest, FollowsTheDesktopsSmoothingOfText) {
    SettingsManager settings(displayName());
    settings.set({{"Xft/Antialias", 1}});
    open();
    const CGRect caption = CGRectMake(windowOrigin().x + 20, windowOrigin().y + 15, 90, 15);
    EXPECT_GT(user->coloursIn(caption), 2U);
    settings.set({{"Xft/Antialias", 0}});
    EXPECT_TRUE(waitUntil([&] {
        settle();
        return user->coloursIn(caption) == 2;
    })) << user->coloursIn(caption);
    settings.set({{"Xft/Antialias", 1}});
    EXPECT_TRUE(waitUntil([&] {
        settle();
        return user->coloursIn(caption) > 2;
    }));
}

TEST_F(PaintingTest, ZoomsWithTheDesktopsTextScale) {
    SettingsManager settings(displayName());
    settings.set({{"Xft/DPI", resolutionFor(1)}});
    open();
    ASSERT_EQ(windowSize(), (CGSize{560, 270}));
    const CGPoint before = thumbOnScreen(1);
    settings.set({{"Xft/DPI", resolutionFor(1.5)}});
    ASSERT_TRUE(waitUntil([this] { return windowSize() == CGSize{840, 405}; }));
    settle();
    EXPECT_EQ(thumbOnScreen(1).y, windowOrigin().y + 1.5 * (before.y - windowOrigin().y));
    user->moveTo(thumbOnScreen(1).x, thumbOnScreen(1).y);
    user->scrollUp();
    expectVolume("Audio/Video", 0.51);
    user->press();
    user->moveTo(thumbOnScreen(1).x + 150, thumbOnScreen(1).y);
    ASSERT_TRUE(waitUntil([this] { return slider(1)->value() > 70; }));
    user->release();
    ASSERT_TRUE(waitUntil([this] { return !slider(1)->isHighlighted(); }));
    settle();
    EXPECT_GT(user->pixelAt(thumbOnScreen(1).x, thumbOnScreen(1).y + 4) & 0xFF, 0xE0U);
}

TEST_F(PaintingTest, LooksAfterChangesAsItDoesPaintedAfreshInAnyZoom) {
    SettingsManager settings(displayName());
    settings.set({{"Xft/DPI", resolutionFor(1)}});
    open();
    for (const double textScale : {1.1, 1.25, 0.75}) {
        settings.set({{"Xft/DPI", resolutionFor(textScale)}});
        ASSERT_TRUE(waitUntil(
            [&] { return std::abs(double{window->content()->zoom()} - textScale) < 0.001; }));
        settle();
        const CGRect shown = {windowOrigin(), windowSize()};
        EXPECT_FALSE(slider(0)->isHighlighted());
        for (const CGFloat volume : {0.1, 0.9, 0.35}) {
            device->changeVolume("Ringtone", static_cast<float>(volume));
            device->changeVolume("Audio/Video", static_cast<float>(1 - volume));
            settle();
        }
        const std::vector<std::uint32_t> changed = user->pixelsIn(shown);
        gdk_window_invalidate_rect(window->host().window(), nullptr, TRUE);
        settle();
        const bool isSame = user->pixelsIn(shown) == changed;
        EXPECT_TRUE(isSame) << "a part of the window was not painted again at " << textScale;
    }
}

TEST_F(PaintingTest, IsNoWiderThanTheScreenAndItsRowsNeither) {
    SettingsManager settings(displayName());
    settings.set({{"Xft/DPI", resolutionFor(3)}});
    open();
    ASSERT_TRUE(waitUntil([this] { return windowSize().width > 1000; }));
    settle();
    EXPECT_EQ(windowSize().width, 426 * 3) << "whole points";
    const CGRect row = rowRect(0);
    EXPECT_EQ(row.size.width, 426);
    EXPECT_GE(row.origin.x, 0);
    settings.set({{"Xft/DPI", resolutionFor(1)}});
    ASSERT_TRUE(waitUntil([this] { return windowSize() == CGSize{560, 270}; }));
    settle();
    EXPECT_EQ(rowRect(0).size.width, 560) << "the rows have been made anew";
}

TEST_F(PaintingTest, HeedsNoTextScaleThatIsNone) {
    SettingsManager settings(displayName());
    for (const int garbage : {0, -1, -96 * 1024}) {
        settings.set({{"Xft/DPI", garbage}});
        open();
        EXPECT_EQ(window->content()->zoom(), 1) << garbage;
        window.reset();
    }
    settings.set({{"Xft/DPI", 1}});
    open();
    EXPECT_EQ(window->content()->zoom(), 0.5);
}

TEST_F(PaintingTest, FollowsTheDesktopsSwitchForAnimations) {
    SettingsManager settings(displayName());
    settings.set({{"Gtk/EnableAnimations", 0}});
    open();
    EXPECT_TRUE(waitUntil([] { return !UIAnimator::shared().isEnabled(); }));
    slider(0)->setValue(90, Animated::Yes);
    EXPECT_FALSE(slider(0)->isAnimating());
    settings.set({{"Gtk/EnableAnimations", 1}});
    EXPECT_TRUE(waitUntil([] { return UIAnimator::shared().isEnabled(); }));
    slider(0)->setValue(10, Animated::Yes);
    EXPECT_TRUE(slider(0)->isAnimating());
    EXPECT_TRUE(waitUntil([this] { return !slider(0)->isAnimating(); }));
}

TEST_F(PaintingTest, AnimationEndsWhereItLeads) {
    open();
    slider(0)->setValue(95, Animated::Yes);
    EXPECT_LT(slider(0)->thumbRect().origin.x, 400);
    ASSERT_TRUE(waitUntil([this] { return !slider(0)->isAnimating(); }));
    settle();
    const CGPoint thumb = thumbOnScreen(0);
    EXPECT_GT(user->pixelAt(thumb.x, thumb.y + 4) & 0xFF, 0xE0U);
}

}  // namespace
}  // namespace test
