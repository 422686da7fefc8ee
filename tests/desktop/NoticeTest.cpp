#include "platform/uikit/UILabel.hpp"
#include "tests/desktop/DesktopFixture.hpp"

namespace test {
namespace {

constexpr const char* notice = "No sound server answers";
constexpr double lineRoom = 22;  // Points.

class NoticeTest : public DesktopFixture {
 protected:
    /// The label with that text anywhere in the window; nullptr when there is none.
    std::shared_ptr<UIView> line() const { return find(window->content()); }
    CGRect inWindow(const UIView& view) const {
        return view.convertRectToView(view.bounds(), window->content().get());
    }
    void waitForHeight(double height) {
        EXPECT_TRUE(waitUntil([&] { return windowSize().height == height; }));
    }
    std::ptrdiff_t buttons() const { return buttonsIn(*window->content()); }

 private:
    static std::ptrdiff_t buttonsIn(const UIView& view) {
        std::ptrdiff_t count = view.className() == "PlateButton" ? 1 : 0;
        for (const auto& subview : view.subviews())
            count += buttonsIn(*subview);
        return count;
    }
    static std::shared_ptr<UIView> find(const std::shared_ptr<UIView>& view) {
        const auto label = std::dynamic_pointer_cast<UILabel>(view);
        if (label && label->text() == notice) return label;
        for (const auto& subview : view->subviews())
            if (auto found = find(subview)) return found;
        return nullptr;
    }
};

TEST_F(NoticeTest, IsALineBelowTheRowsInAWindowThatGrowsForIt) {
    open();
    const double height = windowSize().height;
    const CGRect lastRow = inWindow(*slider(4)->superview());
    window->setFooter(notice);
    waitForHeight(height + lineRoom);
    ASSERT_TRUE(line());
    const CGRect place = inWindow(*line());
    EXPECT_GE(place.origin.y, CGRectGetMaxY(lastRow));
    EXPECT_LE(CGRectGetMaxY(place), height + lineRoom);
    EXPECT_EQ(inWindow(*slider(4)->superview()), lastRow) << "the rows stay where they are";
}

TEST_F(NoticeTest, IsGoneWithoutATrace) {
    open();
    const CGSize before = windowSize();
    window->setFooter(notice);
    waitForHeight(before.height + lineRoom);
    window->setFooter(std::nullopt);
    waitForHeight(before.height);
    EXPECT_FALSE(line());
}

TEST_F(NoticeTest, IsThereWhenTheWindowOpensAfterIt) {
    open();
    const double height = windowSize().height;
    window->close();
    window->setFooter(notice);
    window->show();
    waitForHeight(height + lineRoom);
    EXPECT_TRUE(line());
}

TEST_F(NoticeTest, SharesItsWayToTheSettingsWithTheNoticeOfAnEmptyMixer) {
    files.writeCategories({});
    open();
    window->setSettingsHandler([] {});
    for (const NSString& text : {NSString(), NSString(notice), NSString()}) {
        window->setFooter(text);
        EXPECT_EQ(buttons(), 1) << text.value_or("without a notice below");
    }
}

TEST_F(NoticeTest, IsAnEmptyPartOfThePanel) {
    open();
    window->setFooter(notice);
    settle();
    const CGRect place = inWindow(*line());
    const auto hit =
        window->content()->hitTest({CGRectGetMidX(place), CGRectGetMidY(place)}, nullptr);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->className(), "PanelView");
}

}  // namespace
}  // namespace test
