#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/Translation.hpp"
#include "shells/panel/PanelView.hpp"
#include "tests/locale/CommaLocale.hpp"
#include "tests/support/FakeRoleOutputs.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace shell;

namespace {

using State = RoleOutputs::State;

/// A panel whose widget is 100 points high, with outputs that are offered below it.
class OutputsOfferTest : public testing::Test {
 protected:
    OutputsOfferTest() {
        window->addSubview(panel);
        panel->setWidgetView(rows);
        panel->setMoveHandler([this] { ++moves; });
        outputs.setChangeHandler([this] { show(&outputs); });
        outputs.follow();
    }
    ~OutputsOfferTest() override { outputs.setChangeHandler({}); }

    /// As a window does: as high as the widget and what is below it, if the screen is.
    void show(RoleOutputs* shown) {
        panel->setOutputs(shown);
        rows->setFrame({{0, 0}, {width, rowsHeight}});
        const CGFloat height = std::min(rowsHeight + panel->footerHeight(width), screenHeight);
        const CGRect whole = CGRectMake(0, 0, width, height);
        window->setFrame(whole);
        panel->setLayout({whole.size, whole, whole}, PanelEdge::Hard);
        window->layoutIfNeeded();
    }
    void showInWidth(CGFloat newWidth) {
        width = newWidth;
        show(&outputs);
    }
    std::shared_ptr<UIView> element(const std::string& name) const {
        for (const auto& view : accessibilityElements(window))
            if (view->accessibilityName() == name) return view;
        return nullptr;
    }
    CGRect place(const std::string& name) const {
        const auto view = element(name);
        return view ? view->convertRectToView(view->bounds(), nullptr) : CGRect{};
    }
    void tap(const CGPoint& point) {
        window->sendTouch(UITouchPhase::Began, point);
        window->sendTouch(UITouchPhase::Ended, point);
    }
    void tap(const std::string& name) {
        const CGRect rect = place(name);
        tap(CGPoint{CGRectGetMidX(rect), CGRectGetMidY(rect)});
    }
    bool isShown() const { return element(accept) && element(decline) && element(sentence); }

    static constexpr const char* accept = "Keep them apart";
    static constexpr const char* decline = "Not now";
    static constexpr const char* sentence = "Media and ringtone share one volume.";
    static constexpr const char* underWay = "Keeping them apart\u2026";

    CGFloat width = 320;
    CGFloat rowsHeight = 100;
    CGFloat screenHeight = 1000;
    int moves = 0;
    test::FakeRoleOutputs outputs;
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>();
    std::shared_ptr<PanelView> panel = std::make_shared<PanelView>();
    std::shared_ptr<UIView> rows = std::make_shared<UIView>();
};

TEST_F(OutputsOfferTest, IsShownWhileTheOutputsAreOffered) {
    EXPECT_TRUE(isShown());
    EXPECT_GT(panel->footerHeight(width), 0);
    outputs.settle(State::Unknown);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(panel->footerHeight(width), 0);
    outputs.settle(State::Shared);
    EXPECT_TRUE(isShown());
    show(nullptr);
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(accessibilityElements(window).empty());
}

/// The language of the process, from before the panel is made.
struct InArabic {
    InArabic() { findTranslations(TARNWICK_PROGRAMS); }
    PreferredLanguage arabic{"ar"};
    CommaLocale locale;
};
class OutputsOfferInArabic : private InArabic, public OutputsOfferTest {
 protected:
    void SetUp() override {
        if (!locale.isActive()) GTEST_SKIP() << "no German locale on this system";
    }
};

TEST_F(OutputsOfferInArabic, BeginsAtTheRight) {
    const CGRect first = place(translated(accept));
    const CGRect second = place(translated(decline));
    ASSERT_FALSE(element(accept));
    EXPECT_LT(CGRectGetMaxX(second), first.origin.x);
    EXPECT_EQ(first.origin.y, second.origin.y);
    showInWidth(280);
    EXPECT_LT(place(translated(accept)).origin.y, place(translated(decline)).origin.y);
    tap(translated(accept));
    EXPECT_TRUE(outputs.chosen);
}

TEST_F(OutputsOfferTest, IsNotShownWhereTheSessionHasOutputsForRoles) {
    for (const State state : {State::Apart, State::Foreign, State::Unsettled, State::Changing}) {
        outputs.settle(state);
        EXPECT_FALSE(isShown());
        EXPECT_EQ(panel->footerHeight(width), 0) << "a change that nobody asked for here";
    }
}

TEST_F(OutputsOfferTest, DeclinedByATapIsGone) {
    tap(decline);
    EXPECT_TRUE(outputs.declined);
    EXPECT_FALSE(outputs.chosen);
    EXPECT_EQ(panel->footerHeight(width), 0);
}

TEST_F(OutputsOfferTest, AcceptedByATapSaysThatItIsUnderWayInThePlaceOfTheOffer) {
    const CGSize before = window->frame().size;
    tap(accept);
    EXPECT_EQ(outputs.chosen, RoleOutputs::Choice::Apart);
    EXPECT_FALSE(outputs.declined);
    EXPECT_TRUE(element(underWay));
    EXPECT_FALSE(element(accept));
    EXPECT_FALSE(element(decline));
    EXPECT_EQ(window->frame().size, before);
    outputs.settle(State::Apart);
    EXPECT_FALSE(element(underWay));
    EXPECT_EQ(panel->footerHeight(width), 0);
}

TEST_F(OutputsOfferTest, AcceptedInVainIsGoneToo) {
    tap(accept);
    outputs.settle(State::Unsettled);
    EXPECT_FALSE(element(underWay));
    EXPECT_EQ(panel->footerHeight(width), 0);
    outputs.settle(State::Changing);
    EXPECT_FALSE(element(underWay)) << "what comes later was not asked for here";
}

TEST_F(OutputsOfferTest, IsUnderWayAgainAfterAServerThatRestartsMeanwhile) {
    tap(accept);
    outputs.settle(State::Unknown);
    EXPECT_EQ(panel->footerHeight(width), 0);
    outputs.settle(State::Changing);
    EXPECT_TRUE(element(underWay));
}

TEST_F(OutputsOfferTest, ButtonsAreReachedByTabAndPressedByTheirKey) {
    EXPECT_TRUE(window->sendKey(UIKey::Tab));
    EXPECT_EQ(window->focusedView(), element(accept));
    EXPECT_TRUE(window->sendKey(UIKey::Tab));
    EXPECT_EQ(window->focusedView(), element(decline));
    EXPECT_FALSE(window->sendKey(UIKey::Left));
    EXPECT_FALSE(outputs.declined);
    EXPECT_TRUE(window->sendKey(UIKey::Press));
    EXPECT_TRUE(outputs.declined);
    EXPECT_EQ(window->focusedView(), nullptr);
    EXPECT_FALSE(window->sendKey(UIKey::Press));
}

TEST_F(OutputsOfferTest, TabComesToTheRowsFirstAlsoWhereTheOfferIsOlder) {
    panel->removeFromSuperview();
    panel = std::make_shared<PanelView>();
    window->addSubview(panel);
    panel->setOutputs(&outputs);
    rows = std::make_shared<UISlider>();
    panel->setWidgetView(rows);
    show(&outputs);
    EXPECT_TRUE(window->sendKey(UIKey::Tab));
    EXPECT_EQ(window->focusedView(), rows);
    EXPECT_TRUE(window->sendKey(UIKey::Tab));
    EXPECT_EQ(window->focusedView(), element(accept));
}

TEST_F(OutputsOfferTest, FocusIsARingAroundTheButton) {
    const auto rings = [&] {
        RecordingCanvas canvas;
        window->layoutAndPaint(canvas, window->bounds());
        return canvas.ofKind("stroke").size();
    };
    window->setFocusedView(element(accept));
    const std::size_t without = rings();
    window->sendKey(UIKey::Tab);
    EXPECT_EQ(rings(), without + 2);
}

TEST_F(OutputsOfferTest, FitsEachWidth) {
    for (CGFloat tried = smallestPanel.width; tried <= 700; tried += 10) {
        showInWidth(tried);
        const CGRect left = place(accept);
        const CGRect right = place(decline);
        for (const CGRect& rect : {left, right}) {
            EXPECT_GE(rect.origin.x, 20) << tried;
            EXPECT_LE(CGRectGetMaxX(rect), tried - 20) << tried;
            EXPECT_GE(rect.size.width, 120) << tried << ": the longer title";
            EXPECT_LT(CGRectGetMaxY(rect), CGRectGetMaxY(window->bounds())) << tried;
        }
        EXPECT_FALSE(CGRectIntersectsRect(left, right)) << tried;
        const CGFloat farthest = std::max(CGRectGetMaxX(left), CGRectGetMaxX(right));
        EXPECT_EQ(left.origin.x + farthest, tried) << "in the middle";
    }
}

TEST_F(OutputsOfferTest, TakesAFingertipAboveAndBelowAButton) {
    showInWidth(200);
    const CGRect first = place(accept);
    tap(CGPoint{CGRectGetMidX(first), CGRectGetMaxY(first) + 3});
    EXPECT_TRUE(outputs.chosen);
    EXPECT_FALSE(outputs.declined);
}

TEST_F(OutputsOfferTest, IsAnEmptyPartOfThePanelBesideItsButtons) {
    const CGRect text = place(sentence);
    window->sendTouch(UITouchPhase::Began, {CGRectGetMidX(text), CGRectGetMidY(text)});
    window->sendTouch(UITouchPhase::Moved, {CGRectGetMidX(text) + 20, CGRectGetMidY(text)});
    EXPECT_EQ(moves, 1);
}

TEST_F(OutputsOfferTest, IsBetweenTheRowsAndTheNotice) {
    panel->setNotice("Settings: no skin");
    show(&outputs);
    EXPECT_EQ(panel->scroller().frame(), CGRectMake(0, 0, 320, 100));
    EXPECT_GT(place(sentence).origin.y, 100);
    EXPECT_GE(place("Settings: no skin").origin.y, CGRectGetMaxY(place(decline)));
}

TEST_F(OutputsOfferTest, StaysInSightBelowRowsThatScroll) {
    rowsHeight = 600;
    screenHeight = 300;
    show(&outputs);
    EXPECT_TRUE(panel->scroller().isScrollable());
    EXPECT_LE(CGRectGetMaxY(panel->scroller().frame()), place(sentence).origin.y);
    EXPECT_LT(CGRectGetMaxY(place(accept)), 300);
}

TEST_F(OutputsOfferTest, YieldsToTheRowsOnAScreenWithoutRoomForBoth) {
    rowsHeight = 600;
    screenHeight = 170;
    show(&outputs);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(panel->scroller().frame().size.height, 170);
    EXPECT_FALSE(window->sendKey(UIKey::Tab));
    screenHeight = 300;
    show(&outputs);
    EXPECT_TRUE(isShown());
}

TEST(WrappedNoticeTest, BreaksAtBlanksIntoThreeLinesAtMost) {
    EXPECT_EQ(wrapped("Outputs: short"), "Outputs: short");
    const std::string hebrew = "\u05d0\u05d1\u05d2\u05d3 \u05d0\u05d1";
    EXPECT_EQ(wrapped(hebrew, 7), hebrew) << "columns, not bytes";
    EXPECT_EQ(wrapped("\u58f0\u97f3\u670d\u52a1\u5668\u3002", 8),
              "\u58f0\u97f3\u670d\u52a1\n\u5668\u3002")
        << "where there are no blanks";
    EXPECT_EQ(wrapped("Outputs: the server does not load the output for alarms: no memory"),
              "Outputs: the server does not load the output\nfor alarms: no memory");
    const std::string longest = wrapped(std::string(44, 'a') + " " + std::string(60, 'b') + " " +
                                        std::string(60, 'c') + " d");
    EXPECT_EQ(std::ranges::count(longest, '\n'), 1) << "a word that is too long stays whole";
    EXPECT_EQ(std::ranges::count(wrapped("a b c d e f g h i j k l m n o p q r s t u v w x y z "
                                         "a b c d e f g h i j k l m n o p q r s t u v w x y z "
                                         "a b c d e f g h i j k l m n o p q r s t u v w x y z "
                                         "a b c d e f g h i j k l m n o p q r s t u v w x y z"),
                                 '\n'),
              2);
}

}  // namespace
