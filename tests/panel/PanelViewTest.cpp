#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/LegacyHostedWidget.hpp"
#include "shells/panel/PanelView.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <gtest/gtest.h>

using namespace shell;

namespace {

/// A panel of 200 by 100 points that shows one view as large as itself.
class PanelViewTest : public testing::Test {
 protected:
    PanelViewTest() {
        window->addSubview(panel);
        panel->setWidgetView(taps);
        panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
        panel->setMoveHandler([this] { ++moves; });
        taps->setTapHandler([this](const CGPoint& place) { places.push_back(place); });
        taps->addSubview(std::make_shared<UIView>(whole));
        window->layoutIfNeeded();
    }
    void send(UITouchPhase phase, const CGPoint& point) { window->sendTouch(phase, point); }

    static constexpr CGRect whole = CGRectMake(0, 0, 200, 100);
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(whole);
    std::shared_ptr<PanelView> panel = std::make_shared<PanelView>();
    std::shared_ptr<TapView> taps = std::make_shared<TapView>(whole);
    std::vector<CGPoint> places;
    int moves = 0;
};

}  // namespace

TEST_F(PanelViewTest, LetsAWidgetHaveTheTouchesThatItTakes) {
    send(UITouchPhase::Began, {40, 50});
    send(UITouchPhase::Ended, {40, 50});
    EXPECT_EQ(places, (std::vector<CGPoint>{{40, 50}}));
    EXPECT_EQ(moves, 0);
}

TEST_F(PanelViewTest, HasRoundCornersWhereTheScreenShowsThrough) {
    for (const auto& [edge, radius] :
         {std::pair(PanelEdge::Soft, panelRadius), std::pair(PanelEdge::Hard, panelRadius),
          std::pair(PanelEdge::Square, CGFloat{0})}) {
        panel->setLayout({whole.size, whole, whole}, edge);
        RecordingCanvas canvas;
        window->layoutAndPaint(canvas, whole);
        EXPECT_EQ(canvas.ofKind("rounded").at(0).radius, radius);
        EXPECT_EQ(canvas.ofKind("stroke").at(0).radius, radius);
    }
}

TEST_F(PanelViewTest, MovesTheWindowByADragThatIsNoTap) {
    send(UITouchPhase::Began, {40, 50});
    send(UITouchPhase::Moved, {60, 50});
    send(UITouchPhase::Ended, {60, 50});
    EXPECT_TRUE(places.empty());
    EXPECT_EQ(moves, 1);
}

TEST_F(PanelViewTest, TakesWhatItsWidgetTouchesItselfForNoDrag) {
    taps->setTapHandler([this](const CGPoint& place) {
        // As the legacy controller does with a tap: a touch sent to the view under the place.
        const auto hit = window->hitTest(place, nullptr);
        const auto touch = std::make_shared<UITouch>();
        hit->touchesBegan({touch}, nullptr);
        hit->touchesEnded({touch}, nullptr);
        places.push_back(place);
    });
    send(UITouchPhase::Began, {40, 50});
    send(UITouchPhase::Ended, {40, 50});
    EXPECT_EQ(places.size(), 1U) << "its own touches are no taps";
    send(UITouchPhase::Began, {40, 50});
    send(UITouchPhase::Moved, {60, 50});
    EXPECT_EQ(moves, 1);
}

TEST_F(PanelViewTest, HasNoButtonUnlessItIsToldWhatToClose) {
    EXPECT_EQ(window->hitTest({190, 10}, nullptr), taps);
}

TEST_F(PanelViewTest, ClosesByATapInItsCorner) {
    int closed = 0;
    panel->setCloseHandler([&] { ++closed; });
    panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
    for (const CGPoint& point : {CGPoint{199, 0}, CGPoint{188, 12}, CGPoint{160, 28}}) {
        closed = 0;
        send(UITouchPhase::Began, point);
        send(UITouchPhase::Ended, point);
        EXPECT_EQ(closed, 1) << point.x;
    }
    send(UITouchPhase::Began, {150, 12});
    send(UITouchPhase::Ended, {150, 12});
    EXPECT_EQ(closed, 1) << "beside it";
    EXPECT_EQ(places.size(), 1U);
    EXPECT_EQ(moves, 0);
    panel->setCloseHandler({});
    EXPECT_EQ(window->hitTest({190, 10}, nullptr), taps);
}

TEST_F(PanelViewTest, ScrollsWhatIsTallerBelowTheButton) {
    panel->setCloseHandler([] {});
    const PanelLayout layout = {whole.size, whole, whole};
    panel->setLayout(layout, PanelEdge::Hard);
    EXPECT_EQ(panel->scroller().frame(), whole) << "all of it is seen";
    taps->setFrame(CGRectMake(0, 0, 200, 101));
    panel->setLayout(layout, PanelEdge::Hard);
    EXPECT_EQ(panel->scroller().frame(), CGRectMake(0, 30, 200, 70));
    panel->setCloseHandler({});
    panel->setLayout(layout, PanelEdge::Hard);
    EXPECT_EQ(panel->scroller().frame(), whole);
}

TEST_F(PanelViewTest, HasRoomForEachLineOfItsNotice) {
    EXPECT_EQ(panel->footerHeight(200), 0);
    panel->setNotice("No sound server answers");
    const CGFloat one = panel->footerHeight(200);
    panel->setNotice("No sound server answers\nSettings: no skin");
    const CGFloat two = panel->footerHeight(200);
    panel->setNotice("No sound server answers\nSettings: no skin\nand more");
    EXPECT_GT(two, one);
    EXPECT_EQ(panel->footerHeight(200) - two, two - one);
    panel->setNotice(std::nullopt);
    EXPECT_EQ(panel->footerHeight(200), 0);
}

TEST(CentredLabelTest, DrawsItsLinesOneBelowTheOther) {
    CentredLabel label(CGRectMake(0, 0, 100, 28));
    RecordingCanvas canvas;
    label.setText("one\ntwo");
    label.drawRect(canvas);
    const auto lines = canvas.ofKind("text");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].text, "one");
    EXPECT_EQ(lines[0].rect, CGRectMake(0, 0, 100, 14));
    EXPECT_EQ(lines[1].text, "two");
    EXPECT_EQ(lines[1].rect, CGRectMake(0, 14, 100, 14));
}
