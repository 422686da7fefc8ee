#include "shells/panel/PanelLayout.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace shell;

namespace {

constexpr CGSize screen = {1920, 1080};
constexpr CGSize usual = {560, 270};
constexpr CGFloat notANumber = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat infinite = std::numeric_limits<CGFloat>::infinity();

CGSize panelFor(const CGSize& widget, const CGSize& available = screen,
                PanelEdge edge = PanelEdge::Hard) {
    return panelLayout(widget, available, edge).panel.size;
}

CGRect panelIn(const CGSize& window, PanelEdge edge = PanelEdge::Hard,
               const CGSize& widget = usual) {
    const PanelLayout layout = panelLayoutInWindow(widget, window, edge);
    EXPECT_EQ(layout.window, window);
    EXPECT_EQ(layout.viewport, layout.panel);
    return layout.panel;
}

}  // namespace

TEST(PanelLayout, WithAHardEdgeIsAsLargeAsTheWidget) {
    const PanelLayout layout = panelLayout(usual, screen, PanelEdge::Hard);
    EXPECT_EQ(layout.window, usual);
    EXPECT_EQ(layout.panel, (CGRect{{0, 0}, usual}));
    EXPECT_EQ(layout.viewport, layout.panel);
}

TEST(PanelLayout, WithASoftEdgeLeavesRoomForTheShadowOnEverySide) {
    const PanelLayout layout = panelLayout(usual, screen, PanelEdge::Soft);
    const UIEdgeInsets margins = panelMargins(PanelEdge::Soft);
    EXPECT_EQ(layout.panel, (CGRect{{margins.left, margins.top}, usual}));
    EXPECT_EQ(layout.window.width, 560 + margins.left + margins.right);
    EXPECT_EQ(layout.window.height, 270 + margins.top + margins.bottom);
    EXPECT_GT(margins.bottom, margins.top) << "the light comes from above";
    EXPECT_GT(margins.top, 0);
    EXPECT_EQ(margins.left, margins.right);
}

TEST(PanelLayout, IsWholePointsAroundTheWidget) {
    EXPECT_EQ(panelFor({560.01, 270.5}), (CGSize{561, 271}));
    EXPECT_EQ(panelFor({560, 270}), (CGSize{560, 270}));
}

TEST(PanelLayout, IsLargeEnoughToBeDragged) {
    EXPECT_EQ(panelFor({0, 0}), (CGSize{160, 64}));
    EXPECT_EQ(panelFor({159, 63}), (CGSize{160, 64}));
    EXPECT_EQ(panelFor({160, 64}), (CGSize{160, 64}));
    EXPECT_EQ(panelFor({161, 65}), (CGSize{161, 65}));
    EXPECT_EQ(panelFor({-560, -270}), (CGSize{160, 64}));
}

TEST(PanelLayout, TakesNonsenseForASmallWidget) {
    for (const CGFloat nonsense : {notANumber, infinite, -infinite}) {
        EXPECT_EQ(panelFor({nonsense, 270}), (CGSize{160, 270}));
        EXPECT_EQ(panelFor({560, nonsense}), (CGSize{560, 64}));
    }
}

TEST(PanelLayout, FillsAScreenThatIsTooSmallAndNoMore) {
    EXPECT_EQ(panelFor(usual, {560, 270}), usual);
    EXPECT_EQ(panelFor(usual, {559, 269}), (CGSize{559, 269}));
    EXPECT_EQ(panelFor(usual, {561, 271}), usual);
    EXPECT_EQ(panelFor({560, 1e9}, screen), (CGSize{560, 1080}));
    EXPECT_EQ(panelFor({1e9, 270}, screen), (CGSize{1920, 270}));
}

TEST(PanelLayout, CountsTheShadowAsPartOfTheWindow) {
    const UIEdgeInsets margins = panelMargins(PanelEdge::Soft);
    const CGSize room = {560 + margins.left + margins.right, 270 + margins.top + margins.bottom};
    EXPECT_EQ(panelFor(usual, room, PanelEdge::Soft), usual);
    EXPECT_EQ(panelFor(usual, {room.width - 1, room.height - 1}, PanelEdge::Soft),
              (CGSize{559, 269}));
    EXPECT_EQ(panelLayout(usual, {400, 200}, PanelEdge::Soft).window, (CGSize{400, 200}));
}

TEST(PanelLayout, HasAPanelOnTheTiniestScreen) {
    for (const PanelEdge edge : {PanelEdge::Hard, PanelEdge::Soft, PanelEdge::Square}) {
        EXPECT_EQ(panelFor(usual, {1, 1}, edge), (CGSize{1, 1}));
        EXPECT_EQ(panelFor(usual, {0, 0}, edge), (CGSize{1, 1}));
        EXPECT_EQ(panelFor(usual, {-5, -5}, edge), (CGSize{1, 1}));
    }
}

TEST(PanelLayout, LiesInTheMiddleOfALargerWindow) {
    EXPECT_EQ(panelIn({1000, 800}), CGRectMake(220, 265, 560, 270));
    EXPECT_EQ(panelIn({561, 271}), CGRectMake(0, 0, 560, 270)) << "half a point is not crisp";
    EXPECT_EQ(panelIn({562, 272}), CGRectMake(1, 1, 560, 270));
    const UIEdgeInsets margins = panelMargins(PanelEdge::Soft);
    const CGRect soft = panelIn({1000, 800}, PanelEdge::Soft);
    EXPECT_EQ(soft.size, usual);
    EXPECT_EQ(soft.origin.x - margins.left, 1000 - margins.right - CGRectGetMaxX(soft));
    EXPECT_EQ(soft.origin.y - margins.top, 800 - margins.bottom - CGRectGetMaxY(soft));
}

TEST(PanelLayout, ShrinksWithASmallerWindow) {
    EXPECT_EQ(panelIn({300, 100}), CGRectMake(0, 0, 300, 100));
    EXPECT_EQ(panelIn({1, 1}), CGRectMake(0, 0, 1, 1));
    EXPECT_EQ(panelIn({20, 20}, PanelEdge::Soft).size, (CGSize{1, 1}));
    EXPECT_EQ(panelIn({1000, 800}, PanelEdge::Hard, {1e9, 1e9}), CGRectMake(0, 0, 1000, 800));
}

TEST(PanelLayout, IsZoomedToWholeUnitsOfItsWindow) {
    for (const CGFloat zoom : {0.5, 0.75, 1.1, 1.25, 1.3, 1.5, 2.0, 3.0}) {
        for (const PanelEdge edge : {PanelEdge::Hard, PanelEdge::Soft}) {
            const PanelLayout layout = panelLayout({560, 273}, {5000, 5000}, {edge, zoom});
            for (const CGFloat length :
                 {layout.window.width, layout.window.height, layout.panel.origin.x,
                  layout.panel.origin.y, layout.panel.size.width, layout.panel.size.height})
                EXPECT_EQ(length, std::round(length)) << zoom;
            const PanelLayout points = inPoints(layout, zoom);
            EXPECT_GE(points.viewport.size.width, 560) << zoom << ": it would have to be scrolled";
            EXPECT_GE(points.viewport.size.height, 273) << zoom;
            EXPECT_LT(points.viewport.size.height, 273 + 1 / zoom + 0.001) << zoom;
        }
    }
}

TEST(PanelLayout, HasAllTheRoomThatThereIsForWhatIsZoomedTooFar) {
    EXPECT_EQ(panelLayout({560, 270}, {1000, 600}, {PanelEdge::Hard, 3}).panel.size,
              (CGSize{1000, 600}));
}

TEST(PanelZoom, IsLessWhereTheSmallestPanelWouldNotFit) {
    EXPECT_EQ(zoomWithin(1.25, 1280), 1.25);
    EXPECT_EQ(zoomWithin(3, 320), 2);
    EXPECT_EQ(zoomWithin(1, 120), 0.75);
    EXPECT_EQ(zoomWithin(1, 10), 0.5);
    EXPECT_EQ(zoomWithin(1, -10), 0.5);
}

TEST(PanelGap, LeavesRoomForSomeRows) {
    EXPECT_EQ(gapWithin(8, {1024, 600}), 8);
    EXPECT_EQ(gapWithin(300, {1024, 600}), 215);
    EXPECT_EQ(gapWithin(300, {320, 480}), 40);
    EXPECT_EQ(gapWithin(300, {100, 480}), 0);
    EXPECT_EQ(gapWithin(0, {320, 480}), 0);
}
