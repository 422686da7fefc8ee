#include "shells/panel/WidgetStack.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <gtest/gtest.h>

#include <limits>

using namespace shell;

namespace {

using Log = std::vector<std::string>;

/// Keeps what it is told, and has the size that a test gives it.
class FakeWidget : public PanelWidget {
 public:
    FakeWidget(std::string name, const CGSize& size, Log& log)
        : name_(std::move(name)), size_(size), log_(log) {}

    std::shared_ptr<UIView> view() override { return view_; }
    CGSize preferredSize() override { return size_; }
    void present() override {
        log_.push_back("present " + name_);
        if (sizeWhenPresented) become(*sizeWhenPresented);
        presented_ = true;
    }
    void dismiss() override {
        log_.push_back("dismiss " + name_);
        presented_ = false;
    }
    bool isPresented() const override { return presented_; }
    void readAgain() override { log_.push_back("read " + name_); }
    void setSizeHandler(std::function<void()> handler) override {
        sizeHandler_ = std::move(handler);
    }
    void become(const CGSize& size) {
        size_ = size;
        sizeHandler_();
    }
    std::optional<CGSize> sizeWhenPresented;

 private:
    std::string name_;
    CGSize size_;
    Log& log_;
    std::shared_ptr<UIView> view_ = std::make_shared<UIView>();
    bool presented_ = false;
    std::function<void()> sizeHandler_;
};

class WidgetStackTest : public testing::Test {
 protected:
    void stack(const std::vector<CGSize>& sizes) {
        std::vector<std::unique_ptr<PanelWidget>> owned;
        for (const CGSize& size : sizes) {
            auto widget = std::make_unique<FakeWidget>(std::to_string(owned.size()), size, log);
            widgets.push_back(widget.get());
            owned.push_back(std::move(widget));
        }
        whole = std::make_unique<WidgetStack>(std::move(owned));
        whole->setSizeHandler([this] { ++sizeChanges; });
    }
    CGRect frameOf(std::size_t index) { return widgets[index]->view()->frame(); }
    std::size_t lineCount() {
        RecordingCanvas canvas;
        whole->view()->drawRect(canvas);
        return canvas.ofKind("fill").size();
    }

    Log log;
    std::vector<FakeWidget*> widgets;
    std::unique_ptr<WidgetStack> whole;
    int sizeChanges = 0;
};

}  // namespace

TEST_F(WidgetStackTest, PutsEachBelowTheOneBeforeInTheMiddleOfTheWidest) {
    stack({{320, 270}, {200, 40}, {321, 10}});
    EXPECT_EQ(whole->preferredSize(), (CGSize{321, 320}));
    EXPECT_EQ(frameOf(0), CGRectMake(0, 0, 320, 270));
    EXPECT_EQ(frameOf(1), CGRectMake(60, 270, 200, 40));
    EXPECT_EQ(frameOf(2), CGRectMake(0, 310, 321, 10));
    EXPECT_EQ(whole->view()->subviews().size(), 3U);
    EXPECT_EQ(lineCount(), 2U);
}

TEST_F(WidgetStackTest, FollowsAWidgetThatBecomesTallerAndTellsOfIt) {
    stack({{320, 270}, {200, 40}, {320, 10}});
    whole->preferredSize();
    widgets[1]->become({200, 90});
    EXPECT_EQ(sizeChanges, 1);
    EXPECT_EQ(whole->preferredSize(), (CGSize{320, 370}));
    EXPECT_EQ(frameOf(2), CGRectMake(0, 360, 320, 10));
}

TEST_F(WidgetStackTest, TellsNothingWhereTheWholeStaysAsLargeAsItWas) {
    stack({{320, 270}, {200, 40}});
    whole->preferredSize();
    widgets[1]->become({100, 40});
    EXPECT_EQ(sizeChanges, 0);
    EXPECT_EQ(frameOf(1), CGRectMake(110, 270, 100, 40)) << "the widget moves all the same";
}

TEST_F(WidgetStackTest, TellsOfSeveralSizesThatChangeAsItIsPresentedOnce) {
    stack({{320, 270}, {200, 40}});
    whole->preferredSize();
    widgets[0]->sizeWhenPresented = CGSize{320, 170};
    widgets[1]->sizeWhenPresented = CGSize{200, 90};
    whole->present();
    EXPECT_EQ(sizeChanges, 1);
    EXPECT_EQ(whole->preferredSize(), (CGSize{320, 260}));
}

TEST_F(WidgetStackTest, PresentsDismissesAndReadsThemAllInTheirOrder) {
    stack({{320, 270}, {200, 40}});
    whole->present();
    whole->present();
    EXPECT_TRUE(whole->isPresented());
    whole->readAgain();
    whole->dismiss();
    whole->dismiss();
    EXPECT_FALSE(whole->isPresented());
    EXPECT_EQ(log, (Log{"present 0", "present 1", "read 0", "read 1", "dismiss 0", "dismiss 1"}));
}

TEST_F(WidgetStackTest, DismissesThemAtItsEnd) {
    stack({{320, 270}});
    whole->present();
    whole.reset();
    EXPECT_EQ(log, (Log{"present 0", "dismiss 0"}));
}

TEST_F(WidgetStackTest, CountsASizeThatIsNoneAsNothing) {
    constexpr CGFloat nothing = std::numeric_limits<CGFloat>::quiet_NaN();
    constexpr CGFloat endless = std::numeric_limits<CGFloat>::infinity();
    stack({{320, 50}, {nothing, nothing}, {-5, -5}, {endless, 10001}, {10000, 10000}, {1.5, 0.5}});
    EXPECT_EQ(whole->preferredSize(), (CGSize{10000, 10051}));
    for (const std::size_t index : {1, 2, 3})
        EXPECT_EQ(frameOf(index).size, (CGSize{0, 0})) << index;
    EXPECT_EQ(frameOf(5).size, (CGSize{2, 1})) << "whole points, so that text stays crisp";
    EXPECT_EQ(lineCount(), 2U) << "only between widgets that are seen";
}

TEST_F(WidgetStackTest, IsEmptyWithoutWidgets) {
    stack({});
    EXPECT_EQ(whole->preferredSize(), (CGSize{0, 0}));
    whole->present();
    EXPECT_TRUE(whole->isPresented());
}
