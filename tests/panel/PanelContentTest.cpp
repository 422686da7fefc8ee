#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/panel/RowReport.hpp"

#include <glib.h>
#include <gtest/gtest.h>

using namespace shell;

namespace {

/// Shows what a test puts on it.
class BareController : public _SBUIWidgetViewController {
 public:
    CGSize preferredViewSize() override { return {320, 20}; }
};

class PanelContentTest : public testing::Test {
 protected:
    ~PanelContentTest() override { setPreferencesDirectory(""); }

    template <class View>
    std::shared_ptr<View> put() {
        auto view = std::make_shared<View>(CGRectMake(0, 0, 10, 10));
        widget.view()->addSubview(view);
        return view;
    }
    bool showsTheWidget() { return panelContent(widget).view == widget.view(); }
    std::vector<std::string> labels() {
        std::vector<std::string> texts;
        for (const auto& element : accessibilityElements(panelContent(widget).view))
            texts.push_back(element->accessibilityLabel().value_or("nil"));
        return texts;
    }

    HostedWidget widget{std::make_shared<BareController>(), 320};
};

}  // namespace

TEST_F(PanelContentTest, IsTheWidgetWhereItHasALabelOrASlider) {
    put<UIView>();
    EXPECT_FALSE(showsTheWidget());
    const auto slider = put<UISlider>();
    EXPECT_TRUE(showsTheWidget());
    EXPECT_EQ(panelContent(widget).size, (CGSize{320, 20}));
    slider->setHidden(true);
    EXPECT_FALSE(showsTheWidget());
    put<UILabel>();
    EXPECT_TRUE(showsTheWidget());
}

TEST_F(PanelContentTest, ElseTellsThatThereIsNothingToShowAndWhereTheFileIs) {
    setPreferencesDirectory("/somewhere/else");
    const std::vector<std::string> texts = labels();
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0], "No categories to show");
    EXPECT_EQ(texts[2], "org.tarnwick.mixer.categories.plist");
    EXPECT_EQ(texts[3], "in /somewhere/else");
}

TEST_F(PanelContentTest, NoticeLeadsToTheSettingsWhereThereIsAWay) {
    int opened = 0;
    const PanelContent content = panelContent(widget, [&] { ++opened; });
    const auto button = std::dynamic_pointer_cast<UIButton>(content.view->subviews().back());
    ASSERT_TRUE(button);
    EXPECT_GT(content.size.height, panelContent(widget).size.height);
    EXPECT_LT(CGRectGetMaxY(button->frame()), content.size.height);
    button->press();
    EXPECT_EQ(opened, 1);
}

TEST_F(PanelContentTest, ShortensTheHomeFolder) {
    const std::string home = g_get_home_dir();
    setPreferencesDirectory(home + "/.config/tarnwick/");
    EXPECT_EQ(labels().back(), "in ~/.config/tarnwick");
    setPreferencesDirectory(home + "sick/files");
    EXPECT_EQ(labels().back(), "in " + home + "sick/files");
    setPreferencesDirectory("/");
    EXPECT_EQ(labels().back(), "in /");
}

TEST_F(PanelContentTest, NoticeIsAsWideAsTheWidgetAndHoldsItsLines) {
    const PanelContent content = panelContent(widget);
    EXPECT_EQ(content.size.width, 320);
    EXPECT_EQ(content.view->frame().size, content.size);
    CGFloat below = 0;
    for (const auto& line : content.view->subviews()) {
        EXPECT_GE(line->frame().origin.y, below) << "lines lie on each other";
        EXPECT_GT(line->frame().origin.x, 0);
        EXPECT_LT(CGRectGetMaxX(line->frame()), content.size.width);
        below = CGRectGetMaxY(line->frame());
    }
    EXPECT_LT(below, content.size.height);
}

TEST_F(PanelContentTest, IsReportedAsTextInBothCases) {
    EXPECT_TRUE(rowReport(panelContent(widget).view).starts_with("  No categories to show\n"));
    put<UILabel>()->setText("Media: 40%");
    put<UISlider>()->setValue(0.4F);
    const std::string rows = rowReport(panelContent(widget).view);
    EXPECT_TRUE(rows.starts_with("  Media: 40% ")) << rows;
    EXPECT_TRUE(rows.ends_with("[########------------]\n")) << rows;
}

TEST_F(PanelContentTest, ReportRoundsAVolumeAsItsCaptionDoes) {
    put<UILabel>()->setText("Media: 58%");
    const auto slider = put<UISlider>();
    slider->setMaximumValue(100);
    slider->setValue(57.5F);
    const std::string rows = rowReport(panelContent(widget).view);
    EXPECT_TRUE(rows.ends_with("]\n")) << rows;
}
