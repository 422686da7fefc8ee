#include "mixer/Skin.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Resolution {
    const char* name;
    const char* thumb;  ///< nullptr: no skin.
};

std::string thumbOf(const char* name) {
    const Skin* skin = skinNamed(name);
    return skin ? skin->thumb : "none";
}

}  // namespace

TEST(Skin, IsChosenByTheFirstMatchingName) {
    for (const Resolution& row :
         {Resolution{"Default iOS", "thumb_default"}, Resolution{"Cream Round", "thumb_cream"},
          Resolution{"Cream", "thumb_cream_rect"}, Resolution{"Creamy", "thumb_cream_rect"},
          Resolution{"Cream round", "thumb_cream_rect"},
          Resolution{"Cream Round ", "thumb_cream_rect"},
          Resolution{"Cream Rectangular", "thumb_cream_rect"}, Resolution{"Metal", "thumb_metal"},
          Resolution{"Metallic", "thumb_metal"}, Resolution{"Metal Cream", "thumb_metal"}})
        EXPECT_EQ(thumbOf(row.name), row.thumb) << row.name;
}

TEST(Skin, IsNoneForEveryOtherName) {
    for (const char* name : {"", "Default ios", "Default iOS ", " Default iOS", "default iOS",
                             "Default iOS 7", "cream", "CREAM", "Crea", " Cream", "metal", "Meta"})
        EXPECT_EQ(skinNamed(name), nullptr) << name;
}

TEST(Skin, DefaultLeavesTracksToThePlatformAndTakesTheUsersColours) {
    const Skin& skin = *skinNamed("Default iOS");
    EXPECT_FALSE(skin.captionColor);
    EXPECT_EQ(skin.thumbHighlighted, nullptr);
    EXPECT_STREQ(skin.minimumValueImage, "speaker_quiet");
    EXPECT_STREQ(skin.maximumValueImage, "speaker_loud");
    EXPECT_EQ(skin.minimumTrack, nullptr);
    EXPECT_EQ(skin.maximumTrack, nullptr);
    EXPECT_EQ(skin.maximumTrackHighlighted, nullptr);
}

TEST(Skin, CreamBringsItsOwnImagesAndColour) {
    for (const char* name : {"Cream Round", "Cream"}) {
        const Skin& skin = *skinNamed(name);
        ASSERT_TRUE(skin.captionColor);
        ASSERT_TRUE(skin.captionColor.has_value());
        EXPECT_FLOAT_EQ(static_cast<float>(skin.captionColor->red), 0.8392157F);
        EXPECT_FLOAT_EQ(static_cast<float>(skin.captionColor->green), 0.7529412F);
        EXPECT_FLOAT_EQ(static_cast<float>(skin.captionColor->blue), 0.62352943F);
        EXPECT_STREQ(skin.minimumValueImage, "speaker_quiet_cream");
        EXPECT_STREQ(skin.maximumValueImage, "speaker_loud_cream");
        EXPECT_STREQ(skin.minimumTrack, "left_track_cream2@2x");
        EXPECT_STREQ(skin.maximumTrack, "right_track_cream@2x");
        EXPECT_STREQ(skin.maximumTrackHighlighted, "right_track_cream_highlighted");
    }
    EXPECT_STREQ(skinNamed("Cream Round")->thumbHighlighted, "thumb_cream_active");
    EXPECT_STREQ(skinNamed("Cream")->thumbHighlighted, "thumb_cream_rect_active");
}

TEST(Skin, MetalBringsItsOwnImagesAndColourButTheCommonSpeakers) {
    const Skin& skin = *skinNamed("Metal");
    ASSERT_TRUE(skin.captionColor);
    ASSERT_TRUE(skin.captionColor.has_value());
    for (double component :
         {skin.captionColor->red, skin.captionColor->green, skin.captionColor->blue})
        EXPECT_FLOAT_EQ(static_cast<float>(component), 0.72156864F);
    EXPECT_STREQ(skin.thumbHighlighted, "thumb_metal_active");
    EXPECT_STREQ(skin.minimumValueImage, "speaker_quiet");
    EXPECT_STREQ(skin.maximumValueImage, "speaker_loud");
    EXPECT_STREQ(skin.minimumTrack, "left_track_metal@2x");
    EXPECT_STREQ(skin.maximumTrack, "right_track_metal@2x");
    EXPECT_STREQ(skin.maximumTrackHighlighted, "right_track_metal_highlighted");
}
