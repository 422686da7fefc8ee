#include "shells/desktop/DrawerPlacement.hpp"

#include <gtest/gtest.h>

#include <vector>

using namespace desktop;

namespace test {
namespace {

constexpr CGFloat gap = 8;
constexpr CGSize drawer = {560, 270};

/// 1280 x 800 at the origin, with a panel of 30 points above.
MonitorArea withPanelAbove() {
    return {CGRectMake(0, 0, 1280, 800), CGRectMake(0, 30, 1280, 770)};
}
MonitorArea withoutPanels(const CGRect& whole = CGRectMake(0, 0, 1280, 800)) {
    return {whole, whole};
}

CGPoint originFor(const CGPoint& icon, const MonitorArea& monitor) {
    return drawerOrigin(icon, drawer, monitor, gap);
}

void expectWithin(const CGPoint& origin, const MonitorArea& monitor) {
    EXPECT_GE(origin.x, monitor.work.origin.x + gap);
    EXPECT_GE(origin.y, monitor.work.origin.y + gap);
    EXPECT_LE(origin.x + drawer.width, CGRectGetMaxX(monitor.work) - gap);
    EXPECT_LE(origin.y + drawer.height, CGRectGetMaxY(monitor.work) - gap);
}

TEST(DrawerPlacement, HangsBelowTheIconOfAPanelAboveInItsMiddle) {
    const CGPoint origin = originFor({640, 15}, withPanelAbove());
    EXPECT_EQ(origin, (CGPoint{360, 38}));
}

TEST(DrawerPlacement, StandsAboveTheIconOfAPanelBelow) {
    const MonitorArea monitor = {CGRectMake(0, 0, 1280, 800), CGRectMake(0, 0, 1280, 760)};
    const CGPoint origin = originFor({640, 780}, monitor);
    EXPECT_EQ(origin, (CGPoint{360, 760 - 8 - 270}));
}

TEST(DrawerPlacement, LiesBesideTheIconOfAPanelAtASide) {
    const MonitorArea left = {CGRectMake(0, 0, 1280, 800), CGRectMake(48, 0, 1232, 800)};
    EXPECT_EQ(originFor({24, 400}, left), (CGPoint{56, 265}));
    const MonitorArea right = {CGRectMake(0, 0, 1280, 800), CGRectMake(0, 0, 1232, 800)};
    EXPECT_EQ(originFor({1256, 400}, right), (CGPoint{1232 - 8 - 560, 265}));
}

TEST(DrawerPlacement, GoesByTheNearestEdgeWhereNoPanelIsKnown) {
    EXPECT_EQ(originFor({640, 15}, withoutPanels()), (CGPoint{360, 43}));
    EXPECT_EQ(originFor({640, 785}, withoutPanels()), (CGPoint{360, 785 - 28 - 270}));
    EXPECT_EQ(originFor({15, 400}, withoutPanels()), (CGPoint{43, 265}));
    EXPECT_EQ(originFor({1265, 400}, withoutPanels()), (CGPoint{1265 - 28 - 560, 265}));
}

TEST(DrawerPlacement, TakesThePanelInACornerForAHorizontalOne) {
    const CGPoint origin = originFor({1275, 15}, withoutPanels());
    EXPECT_EQ(origin, (CGPoint{1280 - 8 - 560, 43}));
    EXPECT_EQ(originFor({5, 790}, withoutPanels()), (CGPoint{8, 790 - 28 - 270}));
}

TEST(DrawerPlacement, NeverLeavesTheWorkAreaWhereverTheIconIs) {
    for (const MonitorArea& monitor :
         {withPanelAbove(), withoutPanels(), withoutPanels(CGRectMake(1280, -200, 1024, 768))}) {
        const CGRect& whole = monitor.whole;
        for (CGFloat x = whole.origin.x - 1; x <= CGRectGetMaxX(whole) + 1; x += 37)
            for (CGFloat y = whole.origin.y - 1; y <= CGRectGetMaxY(whole) + 1; y += 29)
                expectWithin(originFor({x, y}, monitor), monitor);
        expectWithin(originFor({CGRectGetMaxX(whole), CGRectGetMaxY(whole)}, monitor), monitor);
    }
}

TEST(DrawerPlacement, LiesAtTheSamePlaceWhereverAcrossThePanelTheIconWasPressed) {
    for (CGFloat y = 0; y < 30; ++y)
        EXPECT_EQ(originFor({640, y}, withPanelAbove()), originFor({640, 15}, withPanelAbove()));
    const MonitorArea right = {CGRectMake(0, 0, 1280, 800), CGRectMake(0, 0, 1232, 800)};
    for (CGFloat x = 1232; x < 1280; ++x)
        EXPECT_EQ(originFor({x, 400}, right), originFor({1256, 400}, right));
}

TEST(DrawerPlacement, LiesInTheCornerThatTheIconIsNear) {
    const MonitorArea monitor = {CGRectMake(100, 0, 2560, 1440), CGRectMake(100, 30, 2560, 1410)};
    const CGFloat lastNear = 100 + drawer.width - 1;
    for (const CGFloat x : {CGFloat{100}, CGFloat{300}, lastNear})
        EXPECT_EQ(originFor({x, 15}, monitor).x, 100 + gap) << x;
    EXPECT_EQ(originFor({lastNear + 1, 15}, monitor).x, 100 + drawer.width / 2) << "and no farther";
    for (const CGFloat x : {2660 - drawer.width + 1, CGFloat{2500}, CGFloat{2659}})
        EXPECT_EQ(originFor({x, 15}, monitor).x, 2660 - gap - drawer.width) << x;
    EXPECT_EQ(originFor({1380, 15}, monitor).x, 1380 - drawer.width / 2);
    const MonitorArea left = {CGRectMake(0, 0, 1280, 1024), CGRectMake(48, 0, 1232, 1024)};
    EXPECT_EQ(originFor({24, 200}, left).y, gap);
    EXPECT_EQ(originFor({24, 900}, left).y, 1024 - gap - drawer.height);
}

TEST(DrawerPlacement, NeverLosesTheIconFromBesideTheDrawer) {
    const MonitorArea monitor = {CGRectMake(0, 0, 1920, 1080), CGRectMake(0, 0, 1920, 1040)};
    for (CGFloat x = 0; x < 1920; ++x) {
        const CGPoint origin = originFor({x, 1060}, monitor);
        EXPECT_LE(origin.x, x + gap);
        EXPECT_GE(origin.x + drawer.width, x - gap);
    }
}

TEST(DrawerPlacement, KnowsAPanelThatKeepsNoPlaceForItselfByItsWindow) {
    const auto rest = [](const CGRect& window) {
        return withoutPanel(withoutPanels(), window).work;
    };
    EXPECT_EQ(rest(CGRectMake(0, 0, 1280, 30)), CGRectMake(0, 30, 1280, 770));
    EXPECT_EQ(rest(CGRectMake(0, 760, 1280, 40)), CGRectMake(0, 0, 1280, 760));
    EXPECT_EQ(rest(CGRectMake(0, 0, 48, 800)), CGRectMake(48, 0, 1232, 800));
    EXPECT_EQ(rest(CGRectMake(1232, 0, 48, 800)), CGRectMake(0, 0, 1232, 800));
    EXPECT_EQ(rest(CGRectMake(300, 748, 680, 44)), CGRectMake(0, 0, 1280, 748)) << "it floats";
    EXPECT_EQ(rest(CGRectMake(1000, -10, 400, 40)), CGRectMake(0, 30, 1280, 770)) << "cut off";
}

TEST(DrawerPlacement, TakesNothingElseForAPanel) {
    const CGRect all = CGRectMake(0, 0, 1280, 800);
    for (const CGRect& window :
         {all, CGRectMake(0, 0, 1280, 400), CGRectMake(400, 300, 300, 40), CGRect{},
          CGRectMake(2000, 0, 800, 30), CGRectMake(1000, 40, 200, 100)})
        EXPECT_EQ(withoutPanel(withoutPanels(), window).work, all) << window.origin.x;
    EXPECT_EQ(withoutPanel(withPanelAbove(), CGRectMake(0, 0, 1280, 24)).work,
              withPanelAbove().work)
        << "what is kept is not given back";
}

TEST(IconSpot, StaysWhereTheFirstPressOnTheIconWas) {
    IconSpot spot;
    EXPECT_EQ(spot.place(), std::nullopt);
    spot.pressed({1000, 15});
    spot.pressed({1022, 2});
    spot.pressed({1030, 28});
    EXPECT_EQ(spot.place(), (CGPoint{1000, 15}));
    spot.pressed({1100, 15});
    EXPECT_EQ(spot.place(), (CGPoint{1100, 15})) << "the icon has moved";
}

TEST(DrawerPlacement, BeginsWithTheWorkAreaWhenItIsTooLarge) {
    const MonitorArea small = {CGRectMake(0, 0, 400, 300), CGRectMake(0, 30, 400, 270)};
    EXPECT_EQ(originFor({200, 15}, small), (CGPoint{8, 38}));
}

TEST(DrawerPlacement, LeavesAGapAroundTheRoom) {
    EXPECT_EQ(roomForDrawer(withPanelAbove(), gap), (CGSize{1264, 754}));
    EXPECT_EQ(roomForDrawer(withoutPanels(CGRectMake(0, 0, 10, 10)), gap), (CGSize{1, 1}));
}

TEST(DrawerPlacement, TakesTheMonitorThatTheIconIsOnOrTheNearest) {
    const std::vector<MonitorArea> monitors = {withoutPanels(),
                                               withoutPanels(CGRectMake(1280, -200, 1024, 768))};
    EXPECT_EQ(monitorAt({1279, 15}, monitors), &monitors[0]);
    EXPECT_EQ(monitorAt({1281, 15}, monitors), &monitors[1]);
    EXPECT_EQ(monitorAt({1281, -199}, monitors), &monitors[1]);
    EXPECT_EQ(monitorAt({100, 5000}, monitors), &monitors[0]);
    EXPECT_EQ(monitorAt({5000, 100}, monitors), &monitors[1]);
    EXPECT_EQ(monitorAt({0, 0}, {}), nullptr);
}

}  // namespace
}  // namespace test
