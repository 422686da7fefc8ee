#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/LegacyHostedWidget.hpp"
#include "shells/panel/PanelView.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <gtest/gtest.h>

#include <utility>

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

/// The same panel with the ways to the settings, over a slider as the first row of a mixer has it.
class PanelWithSettings : public PanelViewTest {
 protected:
    PanelWithSettings() {
        rows->addSubview(slider);
        panel->setWidgetView(rows);
        panel->setSettingsHandler([this] { ++opened; });
        lay();
    }
    void lay() {
        panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
        window->layoutIfNeeded();
    }
    int openedByATapAt(const CGPoint& point) {
        send(UITouchPhase::Began, point);
        send(UITouchPhase::Ended, point);
        return std::exchange(opened, 0);
    }
    int openedByKeys(int tabs) {
        for (int i = 0; i < tabs; ++i)
            window->sendKey(UIKey::Tab);
        window->sendKey(UIKey::Press);
        return std::exchange(opened, 0);
    }

    std::shared_ptr<UIView> rows = std::make_shared<UIView>(whole);
    std::shared_ptr<UISlider> slider = std::make_shared<UISlider>(CGRectMake(60, 30, 120, 31));
    int opened = 0;
};

}  // namespace

TEST_F(PanelWithSettings, GearIsAFingertipWideAndHigh) {
    for (const CGPoint& point : {CGPoint{1, 1}, CGPoint{43, 1}, CGPoint{1, 43}, CGPoint{30, 43}})
        EXPECT_EQ(openedByATapAt(point), 1) << point.x << ", " << point.y;
    EXPECT_EQ(openedByATapAt({45, 1}), 0);
    EXPECT_EQ(openedByATapAt({1, 45}), 0);
}

TEST_F(PanelWithSettings, GearLeavesTheSliderWhatMovesIt) {
    slider->setFrame(CGRectMake(0, 0, 200, 31));
    slider->setValue(0.5F);
    lay();
    EXPECT_EQ(openedByATapAt({20, 15}), 0);
    EXPECT_LT(slider->value(), 0.5F);
}

TEST_F(PanelWithSettings, GearIsReachedByTheTabKeyBehindTheRowsAndHasAName) {
    EXPECT_EQ(openedByKeys(1), 0) << "the slider";
    EXPECT_EQ(openedByKeys(1), 1);
    const auto gear = std::dynamic_pointer_cast<UIButton>(window->focusedView());
    ASSERT_TRUE(gear);
    EXPECT_EQ(gear->accessibilityLabel(), "Settings…");
}

TEST_F(PanelWithSettings, NoticeHasAButtonThatLeadsThereToo) {
    const CGFloat before = panel->footerHeight(whole.size.width);
    panel->setNotice("No sound server answers");
    EXPECT_GE(panel->footerHeight(whole.size.width) - before, 44);
    lay();
    EXPECT_EQ(openedByKeys(2), 1) << "behind the slider, and before the gear";
    panel->setNotice(std::nullopt);
    lay();
    EXPECT_EQ(panel->footerHeight(whole.size.width), before);
    window->setFocusedView(slider);
    EXPECT_EQ(openedByKeys(1), 1) << "the gear";
}

TEST_F(PanelWithSettings, NothingLeadsThereWithoutAHandler) {
    panel->setNotice("No sound server answers");
    lay();
    panel->setSettingsHandler({});
    lay();
    EXPECT_EQ(openedByATapAt({10, 10}), 0);
    EXPECT_EQ(openedByKeys(3), 0);
}

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
