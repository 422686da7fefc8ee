#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/phosh/PageView.hpp"

#include <gtest/gtest.h>

using namespace phosh;

namespace {

/// A page of 200 by 100 points with a slider at y 40 of a content of 300.
class PageViewTest : public testing::Test {
 protected:
    PageViewTest() {
        content->addSubview(slider);
        page->setFrame(whole);
        page->setContent(content);
        window->addSubview(page);
        window->layoutIfNeeded();
    }
    void begin(const CGPoint& point, int finger = 0) {
        window->sendTouch(UITouchPhase::Began, point, finger);
    }
    void move(const CGPoint& point, int finger = 0) {
        window->sendTouch(UITouchPhase::Moved, point, finger);
    }
    void end(const CGPoint& point, int finger = 0) {
        window->sendTouch(UITouchPhase::Ended, point, finger);
    }
    void setContentHeight(CGFloat height) {
        content->setFrame(CGRectMake(0, 0, 200, height));
        page->setContent(content);
        window->layoutIfNeeded();
    }
    CGFloat offset() { return page->scroller().offset(); }
    std::shared_ptr<UIView> notice() { return page->subviews().back(); }

    static constexpr CGRect whole = CGRectMake(0, 0, 200, 100);
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(whole);
    std::shared_ptr<PageView> page = std::make_shared<PageView>();
    std::shared_ptr<UIView> content = std::make_shared<UIView>(CGRectMake(0, 0, 200, 300));
    std::shared_ptr<UISlider> slider = std::make_shared<UISlider>(CGRectMake(20, 40, 160, 30));
};

TEST_F(PageViewTest, TakesFingersOnASliderAlone) {
    EXPECT_TRUE(page->takesTouchAt({100, 55}));
    EXPECT_FALSE(page->takesTouchAt({100, 20}));
    EXPECT_FALSE(page->takesTouchAt({500, 55})) << "beside the page";
}

TEST_F(PageViewTest, GivesATapToAViewThatHasAUseForIt) {
    struct Button : UIView {
        using UIView::UIView;
        void touchesEnded(const UITouchSet&, const std::shared_ptr<UIEvent>&) override { ++taps; }
        int taps = 0;
    };
    const auto button = std::make_shared<Button>(CGRectMake(0, 0, 40, 20));
    content->addSubview(button);
    EXPECT_FALSE(page->takesTouchAt({10, 10})) << "a drag from there may turn the page";
    begin({10, 10});
    end({10, 10});
    EXPECT_EQ(button->taps, 1);
    begin({100, 10});
    end({100, 10});
    EXPECT_EQ(button->taps, 1) << "beside it";
}

TEST_F(PageViewTest, DragThatBeginsOnASliderMovesItInWhicheverDirection) {
    begin({33, 55});
    move({100, 5});
    EXPECT_GT(slider->value(), 0.4);
    EXPECT_EQ(offset(), 0);
    EXPECT_FALSE(page->isScrolling());
    end({100, 5});
}

TEST_F(PageViewTest, DragUpOrDownScrollsWithTheFinger) {
    begin({100, 90});
    move({100, 87});
    EXPECT_FALSE(page->isScrolling()) << "not quite still is not meant";
    move({103, 80});
    EXPECT_TRUE(page->isScrolling());
    EXPECT_EQ(offset(), 10) << "the content is under the finger again";
    move({103, 60});
    EXPECT_EQ(offset(), 30);
    end({103, 60});
    EXPECT_FALSE(page->isScrolling());
    EXPECT_EQ(slider->value(), 0);
}

TEST_F(PageViewTest, DragSidewaysIsLeftToTheLockScreenToItsEnd) {
    begin({100, 90});
    move({110, 85});
    EXPECT_FALSE(page->isScrolling());
    move({110, 20});
    EXPECT_FALSE(page->isScrolling()) << "decided once";
    EXPECT_EQ(offset(), 0);
    end({110, 20});
    begin({100, 90});
    move({100, 80});
    EXPECT_EQ(offset(), 10) << "the next one is decided anew";
}

TEST_F(PageViewTest, DragAsFarAcrossAsDownTurnsThePage) {
    begin({100, 90});
    move({90, 80});
    EXPECT_FALSE(page->isScrolling());
}

TEST_F(PageViewTest, DragOfWhatFitsIsLeftToTheLockScreen) {
    setContentHeight(100);
    begin({100, 90});
    move({100, 50});
    EXPECT_FALSE(page->isScrolling());
    EXPECT_EQ(offset(), 0);
}

TEST_F(PageViewTest, SecondFingerDoesNotTakeTheContentOver) {
    begin({100, 90}, 1);
    begin({50, 90}, 2);
    move({50, 40}, 2);
    EXPECT_EQ(offset(), 0);
    move({100, 80}, 1);
    end({50, 40}, 2);
    move({100, 70}, 1);
    EXPECT_EQ(offset(), 20) << "the first finger still holds it";
}

TEST_F(PageViewTest, CancelledFingerEndsTheDrag) {
    begin({100, 90});
    move({100, 70});
    window->cancelTouches();
    EXPECT_FALSE(page->isScrolling());
    begin({100, 90});
    move({100, 80});
    EXPECT_EQ(offset(), 30);
}

TEST_F(PageViewTest, WheelScrollsBesideTheSliders) {
    EXPECT_TRUE(window->sendScroll({100, 20}, -1));
    EXPECT_EQ(offset(), 50);
}

TEST_F(PageViewTest, PutsTheContentInTheMiddleAndTheNoticeBelowIt) {
    setContentHeight(40);
    EXPECT_EQ(content->frame().origin.y, 30);
    page->setNotice("No sound server answers");
    window->layoutIfNeeded();
    EXPECT_EQ(content->frame().origin.y, 30) << "the rows stay where they are";
    EXPECT_EQ(notice()->frame().origin.y, 70);
    page->setNotice(std::nullopt);
    window->layoutIfNeeded();
    EXPECT_EQ(page->subviews().size(), 1U);
}

TEST_F(PageViewTest, MakesRoomForTheNoticeBelowWhatFillsThePage) {
    page->setNotice("No sound server answers");
    window->layoutIfNeeded();
    EXPECT_LE(CGRectGetMaxY(notice()->frame()), 100);
    EXPECT_EQ(page->scroller().frame().size.height, notice()->frame().origin.y);
}

}  // namespace
