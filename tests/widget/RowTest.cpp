#include "tests/widget/WidgetFixture.hpp"

namespace {

class Row : public WidgetTest {
 protected:
    struct Parts {
        std::shared_ptr<MixerUnderTest> mixer;
        std::shared_ptr<UIView> row;
        std::shared_ptr<UILabel> caption;
        std::shared_ptr<UISlider> slider;
    };
    Parts built(const NSString& skin, NSInteger number = 0,
                const CGRect& frame = CGRectMake(0, 10, 320, 50), const NSString& name = "Name") {
        Parts parts;
        parts.mixer = newMixer();
        parts.mixer->loadSettings();
        parts.mixer->resourcesBundle = bundle;
        parts.mixer->selectedSkin = skin;
        parts.row = parts.mixer->singleCategoryView(number, frame, name);
        const auto children = parts.row->subviews();
        EXPECT_EQ(children.size(), 2U);
        parts.caption = std::dynamic_pointer_cast<UILabel>(children.at(0));
        parts.slider = std::dynamic_pointer_cast<UISlider>(children.at(1));
        EXPECT_NE(parts.caption, nullptr);
        EXPECT_NE(parts.slider, nullptr);
        return parts;
    }
    static std::string name(const UISlider::Image& image) { return image ? image->name() : "none"; }
};

constexpr UIEdgeInsets trackInsets = {0, 9, 0, 9};

}  // namespace

TEST_F(Row, IsThreeViewsWithFixedFrames) {
    const Parts parts = built("Default iOS", 3, CGRectMake(7, 60, 320, 50));
    EXPECT_EQ(parts.row->className(), "UIView");
    EXPECT_EQ(parts.row->frame(), CGRectMake(7, 60, 320, 50));
    EXPECT_EQ(parts.row->tag(), 0);
    EXPECT_EQ(parts.row->backgroundColor(), std::nullopt);
    EXPECT_EQ(parts.row->superview(), nullptr);
    EXPECT_EQ(parts.caption->frame(), CGRectMake(20, 5, 300, 15));
    EXPECT_EQ(parts.slider->frame(), CGRectMake(20, 20, 280, 30));
}

TEST_F(Row, TakesOnlyTheWidthOfItsFrame) {
    const Parts narrow = built("Metal", 0, CGRectMake(0, 0, 40, 50));
    EXPECT_EQ(narrow.caption->frame(), CGRectMake(20, 5, 20, 15));
    EXPECT_EQ(narrow.slider->frame(), CGRectMake(20, 20, 0, 30));
    const Parts low = built("Metal", 0, CGRectMake(0, 0, 100, 5));
    EXPECT_EQ(low.caption->frame(), CGRectMake(20, 5, 80, 15));
    EXPECT_EQ(low.slider->frame(), CGRectMake(20, 20, 60, 30));
    const Parts none = built("Metal", 0, CGRectMake(0, 0, 0, 50));
    EXPECT_EQ(none.caption->frame(), CGRectMake(20, 5, -20, 15));
    EXPECT_EQ(none.slider->frame(), CGRectMake(20, 20, -40, 30));
}

TEST_F(Row, IsTaggedByTheCategoryNumber) {
    for (NSInteger number : {0, 1, 4, 999}) {
        const Parts parts = built("Default iOS", number);
        EXPECT_EQ(parts.caption->tag(), 1000 + number);
        EXPECT_EQ(parts.slider->tag(), 2000 + number);
    }
}

TEST_F(Row, HasACaptionWithTheNameAloneAndASliderAtZero) {
    const Parts parts = built("Default iOS", 0, CGRectMake(0, 0, 320, 50), "BT Headset");
    EXPECT_EQ(parts.caption->text(), "BT Headset");
    EXPECT_EQ(parts.caption->backgroundColor(), UIColor::clearColor());
    EXPECT_EQ(parts.caption->font(), UILabel().font().fontWithSize(12));
    EXPECT_EQ(parts.slider->value(), 0.0F);
    EXPECT_EQ(parts.slider->minimumValue(), 0.0F);
    EXPECT_EQ(parts.slider->maximumValue(), 100.0F);
    EXPECT_TRUE(parts.slider->isContinuous());
}

TEST_F(Row, MayLackAName) {
    EXPECT_EQ(built("Default iOS", 0, CGRectMake(0, 0, 320, 50), std::nullopt).caption->text(),
              std::nullopt);
}

TEST_F(Row, InTheDefaultSkinTakesTheSettingsColours) {
    writeSettings(
        "<key>textColor</key><integer>6</integer><key>thumbTintColor</key><integer>4</integer>"
        "<key>minimumTrackTintColor</key><integer>5</integer>"
        "<key>maximumTrackTintColor</key><integer>7</integer>");
    const Parts parts = built("Default iOS");
    EXPECT_EQ(parts.caption->textColor(), UIColor::yellowColor());
    EXPECT_EQ(parts.slider->thumbTintColor(), UIColor::greenColor());
    EXPECT_EQ(parts.slider->minimumTrackTintColor(), UIColor::blueColor());
    EXPECT_EQ(parts.slider->maximumTrackTintColor(), UIColor::orangeColor());
    EXPECT_EQ(name(parts.slider->thumbImage(UIControlStateNormal)), "thumb_default");
    EXPECT_EQ(name(parts.slider->thumbImage(UIControlStateHighlighted)), "none");
    EXPECT_EQ(name(parts.slider->minimumValueImage()), "speaker_quiet");
    EXPECT_EQ(name(parts.slider->maximumValueImage()), "speaker_loud");
    for (UIControlState state : {UIControlStateNormal, UIControlStateHighlighted}) {
        EXPECT_EQ(name(parts.slider->minimumTrackImage(state)), "none");
        EXPECT_EQ(name(parts.slider->maximumTrackImage(state)), "none");
    }
}

TEST_F(Row, InAnotherSkinIgnoresTheSettingsColours) {
    writeSettings("<key>textColor</key><integer>6</integer>");
    struct Expected {
        const char* skin;
        const char* thumb;
        const char* activeThumb;
        const char* quiet;
        const char* left;
        const char* right;
        const char* activeRight;
        float red;
    };
    for (const Expected& row :
         {Expected{"Cream Round", "thumb_cream", "thumb_cream_active", "speaker_quiet_cream",
                   "left_track_cream2@2x", "right_track_cream@2x", "right_track_cream_highlighted",
                   214.0F / 255},
          Expected{"Cream", "thumb_cream_rect", "thumb_cream_rect_active", "speaker_quiet_cream",
                   "left_track_cream2@2x", "right_track_cream@2x", "right_track_cream_highlighted",
                   214.0F / 255},
          Expected{"Metal", "thumb_metal", "thumb_metal_active", "speaker_quiet",
                   "left_track_metal@2x", "right_track_metal@2x", "right_track_metal_highlighted",
                   184.0F / 255}}) {
        const Parts parts = built(row.skin);
        const UISlider& slider = *parts.slider;
        EXPECT_FLOAT_EQ(static_cast<float>(parts.caption->textColor().red), row.red);
        EXPECT_EQ(parts.caption->textColor().alpha, 1.0);
        EXPECT_EQ(name(slider.thumbImage(UIControlStateNormal)), row.thumb);
        EXPECT_EQ(name(slider.thumbImage(UIControlStateHighlighted)), row.activeThumb);
        EXPECT_EQ(name(slider.minimumValueImage()), row.quiet);
        EXPECT_EQ(name(slider.minimumTrackImage(UIControlStateNormal)), row.left);
        EXPECT_EQ(name(slider.minimumTrackImage(UIControlStateHighlighted)), "none");
        EXPECT_EQ(name(slider.maximumTrackImage(UIControlStateNormal)), row.right);
        EXPECT_EQ(name(slider.maximumTrackImage(UIControlStateHighlighted)), row.activeRight);
        EXPECT_EQ(slider.minimumTrackImage(UIControlStateNormal)->capInsets(), trackInsets);
        EXPECT_EQ(slider.maximumTrackImage(UIControlStateNormal)->capInsets(), trackInsets);
        EXPECT_EQ(slider.maximumTrackImage(UIControlStateHighlighted)->capInsets(), trackInsets);
        EXPECT_EQ(slider.thumbTintColor(), std::nullopt);
        EXPECT_EQ(slider.minimumTrackTintColor(), std::nullopt);
        EXPECT_EQ(slider.maximumTrackTintColor(), std::nullopt);
    }
}

TEST_F(Row, WithoutASkinKeepsThePlatformsLook) {
    for (const NSString& skin : {NSString("Default ios"), NSString(""), NSString()}) {
        const Parts parts = built(skin);
        EXPECT_EQ(parts.caption->textColor(), UILabel::defaultTextColor());
        EXPECT_EQ(parts.slider->thumbImage(UIControlStateNormal), nullptr);
        EXPECT_EQ(parts.slider->minimumValueImage(), nullptr);
        EXPECT_EQ(parts.slider->maximumValueImage(), nullptr);
        EXPECT_EQ(parts.slider->thumbTintColor(), std::nullopt);
    }
}

TEST_F(Row, WithoutItsImagesKeepsThePlatformsLook) {
    bundle = NSBundle::bundleWithPath(folder.string());
    ASSERT_NE(bundle, nullptr);
    const Parts parts = built("Metal");
    EXPECT_EQ(parts.slider->thumbImage(UIControlStateNormal), nullptr);
    EXPECT_EQ(parts.slider->minimumTrackImage(UIControlStateNormal), nullptr);
    EXPECT_FLOAT_EQ(static_cast<float>(parts.caption->textColor().red), 184.0F / 255);
    bundle = nullptr;
    EXPECT_EQ(built("Metal").slider->thumbImage(UIControlStateNormal), nullptr);
    EXPECT_TRUE(log.empty());
}

TEST_F(Row, IsMadeAnewAtEveryCallAndFollowsTheVariables) {
    Parts parts = built("Default iOS");
    parts.mixer->selectedSkin = "Metal";
    const auto second = parts.mixer->singleCategoryView(0, CGRectMake(0, 0, 320, 50), "Name");
    EXPECT_NE(second, parts.row);
    const auto slider = std::dynamic_pointer_cast<UISlider>(second->subviews().at(1));
    EXPECT_EQ(name(slider->thumbImage(UIControlStateNormal)), "thumb_metal");
    EXPECT_EQ(name(parts.slider->thumbImage(UIControlStateNormal)), "thumb_default");
}

TEST_F(Row, TellsOnlyValueChangesToTheMixer) {
    Parts parts = built("Default iOS");
    parts.mixer->loadCategories();
    parts.mixer->avs = service;
    parts.mixer->addSubview(parts.row);
    parts.slider->sendActionsForControlEvents(~4096U);
    EXPECT_TRUE(service->sets.empty());
    parts.slider->sendActionsForControlEvents(4096U);
    EXPECT_EQ(service->sets.size(), 1U);
}
