#include "backends/cairo/CairoPicture.hpp"
#include "tests/support/Golden.hpp"
#include "tests/support/MixerScene.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace {

using test::CategoryEntry;

class GoldenMixer : public testing::Test {
 public:
    void expectGolden(MixerScene& scene, const std::string& name, int scale = 2) {
        const std::string path = folder.path("mixer.png");
        ASSERT_TRUE(painting::paintViewToPNG(scene.window(), path, CGFloat(scale)));
        EXPECT_TRUE(fileMatchesGolden(path, name + "@" + std::to_string(scale) + "x"));
    }

    static std::vector<CategoryEntry> threeCategories() {
        std::vector<CategoryEntry> categories = MixerScene::fiveCategories();
        categories.resize(3);
        return categories;
    }

    TemporaryFolder folder;
};

struct SkinPicture {
    const char* skin;
    const char* name;
};

std::ostream& operator<<(std::ostream& stream, const SkinPicture& picture) {
    return stream << picture.name;
}

class GoldenMixerSkins : public GoldenMixer, public testing::WithParamInterface<SkinPicture> {};

TEST_P(GoldenMixerSkins, ShowFiveRowsAtEveryScale) {
    MixerScene scene({.skin = GetParam().skin}, MixerScene::fiveCategories(), 320);
    for (const int scale : {1, 2, 3})
        expectGolden(scene, GetParam().name, scale);
}

TEST_P(GoldenMixerSkins, ShowTheFingerOnAThumb) {
    MixerScene scene({.skin = GetParam().skin}, threeCategories(), 320);
    scene.holdThumb(1);
    expectGolden(scene, std::string(GetParam().name) + "-held");
}

TEST_P(GoldenMixerSkins, ShowWhichVolumesAreNotKnown) {
    for (const char* category : {"Audio/Video", "HeadsetBT"})
        MixerScene::device().setReadable(category, false);
    MixerScene scene({.skin = GetParam().skin}, threeCategories(), 320);
    for (const NSInteger number : {1, 2})
        scene.slider(number)->setValueKnown(false);
    scene.slider(2)->setValue(50);
    expectGolden(scene, std::string(GetParam().name) + "-unknown");
    for (const char* category : {"Audio/Video", "HeadsetBT"})
        MixerScene::device().setReadable(category, true);
}

TEST_P(GoldenMixerSkins, ShowTheFocus) {
    MixerScene scene({.skin = GetParam().skin}, threeCategories(), 320);
    scene.window()->sendKey(UIKey::Tab);
    expectGolden(scene, std::string(GetParam().name) + "-focus");
}

INSTANTIATE_TEST_SUITE_P(Golden, GoldenMixerSkins,
                         testing::Values(SkinPicture{"Default iOS", "default"},
                                         SkinPicture{"Cream", "cream-rectangular"},
                                         SkinPicture{"Cream Round", "cream-round"},
                                         SkinPicture{"Metal", "metal"}));

TEST_F(GoldenMixer, WithoutASkinHasThePlatformsLook) {
    MixerScene scene({.skin = "none"}, threeCategories(), 320, UIColor::whiteColor());
    expectGolden(scene, "no-skin");
}

TEST_F(GoldenMixer, WearsTheColorsOfItsSettings) {
    MixerScene scene(
        {.skin = "Default iOS", .thumb = 6, .text = 7, .minimumTrack = 4, .maximumTrack = 9},
        threeCategories(), 320);
    expectGolden(scene, "default-colors");
}

TEST_F(GoldenMixer, ShowsNothingOfTheSideOfATrackThatTheThumbHasLeftNoRoomFor) {
    const auto paint = [this](const CategoryEntry& category, const SceneSettings& settings,
                              int scale, const std::string& name) {
        MixerScene scene(settings, {category}, 320);
        const std::string path = folder.path(name);
        EXPECT_TRUE(painting::paintViewToPNG(scene.window(), path, CGFloat(scale)));
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    for (const int scale : {1, 2, 3}) {
        EXPECT_EQ(paint({"HeadphonesBT", "At 0"}, {.minimumTrack = 0}, scale, "one.png"),
                  paint({"HeadphonesBT", "At 0"}, {.minimumTrack = 4}, scale, "other.png"));
        EXPECT_EQ(paint({"PhoneCall", "At 100"}, {.maximumTrack = 0}, scale, "one.png"),
                  paint({"PhoneCall", "At 100"}, {.maximumTrack = 4}, scale, "other.png"));
        EXPECT_NE(paint({"Ringtone", "At 80"}, {.maximumTrack = 0}, scale, "one.png"),
                  paint({"Ringtone", "At 80"}, {.maximumTrack = 4}, scale, "other.png"));
    }
}

TEST_F(GoldenMixer, LeavesThePercentagesAway) {
    MixerScene scene({.more = "<key>displayPercentage</key><false/>"}, threeCategories(), 320);
    expectGolden(scene, "no-percentages");
}

TEST_F(GoldenMixer, TellsThatARowCannotBeRead) {
    MixerScene::device().setReadable("Audio/Video", false);
    MixerScene scene({}, threeCategories(), 320);
    expectGolden(scene, "unreadable");
    MixerScene::device().setReadable("Audio/Video", true);
}

TEST_F(GoldenMixer, IsAsWideAsItsPlace) {
    MixerScene wide({.skin = "Metal"}, threeCategories(), 560);
    expectGolden(wide, "wide", 1);
    MixerScene narrow({.skin = "Metal"}, threeCategories(), 140);
    expectGolden(narrow, "narrow");
}

TEST_F(GoldenMixer, ShortensACaptionThatIsTooLong) {
    std::vector<CategoryEntry> categories = threeCategories();
    categories[0].prettyCategoryName = "A ringtone whose name nobody will ever read to its end";
    categories[1].prettyCategoryName = "وسائط";
    categories[2].prettyCategoryName = "Kopfhörer – Größe, Γειά, Привет";
    MixerScene scene({}, categories, 320);
    expectGolden(scene, "captions");
}

}  // namespace
