#include "platform/uikit/UIWindow.hpp"
#include "tests/widget/WidgetFixture.hpp"

#include <cmath>
#include <stdexcept>

namespace {

class SliderToVolume : public WidgetTest {
 protected:
    void moveByUser(MixerUnderTest& mixer, NSInteger number, float percent) {
        mixer.slider(number)->setValueFromUser(percent);
    }
};

using VolumeToSlider = SliderToVolume;

}  // namespace

TEST_F(SliderToVolume, SetsTheVolumeAndTheCaption) {
    struct Row {
        float percent;
        const char* caption;
        float volume;
    };
    const auto mixer = assembledMixer();
    for (const Row& row :
         {Row{37.6F, "Ringtone: 38%", 0.376F}, Row{0, "Ringtone: 0%", 0},
          Row{100, "Ringtone: 100%", 1}, Row{12.5F, "Ringtone: 12%", 0.125F},
          Row{13.5F, "Ringtone: 14%", 0.135F}, Row{0.5F, "Ringtone: 0%", 0.005F},
          Row{0.51F, "Ringtone: 1%", 0.0051F}, Row{99.5F, "Ringtone: 100%", 0.995F},
          Row{99.4F, "Ringtone: 99%", 0.994F}}) {
        moveByUser(*mixer, 0, row.percent);
        EXPECT_EQ(mixer->captionText(0), row.caption);
        ASSERT_FALSE(service->sets.empty());
        EXPECT_EQ(service->sets.back().first, "Ringtone");
        EXPECT_EQ(service->sets.back().second, row.percent / 100.0F) << row.percent;
        EXPECT_NEAR(service->sets.back().second, row.volume, 1e-6F);
    }
}

TEST_F(SliderToVolume, SendsEveryMovementOfADrag) {
    const auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 300));
    const auto mixer = assembledMixer();
    window->addSubview(parent);
    const CGRect thumb =
        mixer->slider(0)->convertRectToView(mixer->slider(0)->thumbRect(), nullptr);
    const CGPoint grip = {CGRectGetMidX(thumb), CGRectGetMidY(thumb)};
    window->sendTouch(UITouchPhase::Began, grip);
    EXPECT_TRUE(mixer->slider(0)->isHighlighted());
    for (int step = 1; step <= 3; ++step)
        window->sendTouch(UITouchPhase::Moved, {grip.x + step * 10, grip.y});
    window->sendTouch(UITouchPhase::Ended, {grip.x + 30, grip.y});
    ASSERT_EQ(service->sets.size(), 3U);
    EXPECT_LT(service->sets[0].second, service->sets[1].second);
    EXPECT_LT(service->sets[1].second, service->sets[2].second);
    EXPECT_FALSE(mixer->slider(0)->isHighlighted());
    EXPECT_EQ(service->sets[2].second, mixer->slider(0)->value() / 100.0F);
}

TEST_F(SliderToVolume, WritesTheCaptionBeforeItSendsTheVolume) {
    class Watcher : public ScriptedService {
     public:
        bool setVolumeTo(float, const NSString&) override {
            captionAtSet = mixer->captionText(0);
            return false;
        }
        MixerUnderTest* mixer = nullptr;
        NSString captionAtSet;
    };
    const auto watcher = std::make_shared<Watcher>();
    const auto mixer = assembledMixer();
    watcher->mixer = mixer.get();
    mixer->avs = watcher;
    moveByUser(*mixer, 0, 70);
    EXPECT_EQ(watcher->captionAtSet, "Ringtone: 70%");
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 70%");  // A failure is not looked at.
}

TEST_F(SliderToVolume, NeitherLogsNorMovesTheBoundPartner) {
    writeSettings("<key>enableDebugLogging</key><true/><key>bindRingerAndAV</key><true/>");
    const auto mixer = assembledMixer();
    log.clear();
    moveByUser(*mixer, 0, 70);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(mixer->slider(1)->value(), 50.0F);
    EXPECT_EQ(service->sets.size(), 1U);
}

TEST_F(SliderToVolume, UsesTheNumberInTheTagWithHiddenCategoriesBefore) {
    writeCategories(record("A", "a", "<false/>") + record("B", "Bee"));
    const auto mixer = assembledMixer();
    moveByUser(*mixer, 1, 20);
    ASSERT_EQ(service->sets.size(), 1U);
    EXPECT_EQ(service->sets[0].first, "B");
    EXPECT_EQ(mixer->captionText(1), "Bee: 20%");
}

TEST_F(SliderToVolume, NamesTheRouteForThreeCategoriesOnly) {
    struct Row {
        const char* category;
        bool route;
    };
    for (const char* percentage : {"<true/>", "<false/>"}) {
        writeSettings(std::string("<key>displayPercentage</key>") + percentage);
        const std::string value = std::string(percentage) == "<true/>" ? ": 60%" : "";
        for (const Row& row :
             {Row{"Ringtone", false}, Row{"Audio/Video", true}, Row{"HeadsetBT", false},
              Row{"HeadphonesBT", false}, Row{"PhoneCall", true}, Row{"VideoConference", true},
              Row{"Audio/Video2", false}, Row{"phonecall", false}}) {
            writeCategories(record(row.category, "Name"));
            service->volumes[row.category] = 0.5F;
            service->routes[row.category] = "Headphones";
            const auto mixer = assembledMixer();
            service->routesAsked.clear();
            moveByUser(*mixer, 0, 60);
            EXPECT_EQ(mixer->captionText(0), (row.route ? "Name (Headphones)" : "Name") + value)
                << row.category;
            EXPECT_EQ(service->routesAsked.size(), row.route ? 1U : 0U) << row.category;
        }
    }
}

TEST_F(SliderToVolume, AsksTheRouteAfreshEachTimeAndShowsAMissingOne) {
    const auto mixer = assembledMixer();
    service->routes["Audio/Video"] = "HDMI";
    moveByUser(*mixer, 1, 75);
    EXPECT_EQ(mixer->captionText(1), "Audio/Video (HDMI): 75%");
    service->routes.erase("Audio/Video");
    moveByUser(*mixer, 1, 74);
    EXPECT_EQ(mixer->captionText(1), "Audio/Video ((null)): 74%");
}

TEST_F(VolumeToSlider, MovesTheSliderWithoutAnimationAndWritesTheCaption) {
    const auto mixer = assembledMixer();
    mixer->updateSliderAndLabelForCategoryNum(0, 0.376F);
    EXPECT_EQ(mixer->slider(0)->value(), 0.376F * 100.0F);
    EXPECT_EQ(mixer->captionText(0), "Ringtone: 38%");
    EXPECT_FALSE(mixer->slider(0)->isAnimating());
    EXPECT_TRUE(service->sets.empty());
}

TEST_F(VolumeToSlider, LeavesASliderAloneThatStandsThereAlready) {
    const auto mixer = assembledMixer();
    const auto slider = mixer->slider(0);
    slider->setValue(80);
    slider->setValue(20, Animated::Yes);
    ASSERT_TRUE(slider->isAnimating());
    mixer->updateSliderAndLabelForCategoryNum(0, 0.2F);
    EXPECT_TRUE(slider->isAnimating());  // Setting the value again would have ended it.
    mixer->updateSliderAndLabelForCategoryNum(0, std::nextafter(0.2F, 1.0F));
    EXPECT_FALSE(slider->isAnimating());
    EXPECT_EQ(slider->value(), std::nextafter(0.2F, 1.0F) * 100.0F);
}

TEST_F(VolumeToSlider, DoesNotCareWhetherTheSliderIsHeld) {
    const auto mixer = assembledMixer();
    mixer->slider(0)->setHighlighted(true);
    mixer->updateSliderAndLabelForCategoryNum(0, 0.9F);
    EXPECT_EQ(mixer->slider(0)->value(), 0.9F * 100.0F);
}

TEST_F(VolumeToSlider, ChangesNothingForAHiddenCategory) {
    writeCategories(record("A", "a") + record("Audio/Video", "b", "<false/>"));
    service->volumes["A"] = 0.5F;
    const auto mixer = assembledMixer();
    service->routesAsked.clear();
    mixer->updateSliderAndLabelForCategoryNum(1, 0.9F);
    EXPECT_EQ(mixer->captionText(0), "a: 50%");
    EXPECT_EQ(service->routesAsked.size(), 1U);  // The caption is formed all the same.
}

TEST_F(VolumeToSlider, RefusesANumberOutsideTheList) {
    const auto mixer = assembledMixer();
    for (NSInteger number : {-1, 5, -1000000, 1000000})
        EXPECT_THROW(mixer->updateSliderAndLabelForCategoryNum(number, 0.5F), std::out_of_range);
    EXPECT_NO_THROW(mixer->updateSliderAndLabelForCategoryNum(4, 0.5F));
}

TEST_F(VolumeToSlider, ShowsPercentagesOnlyWhenTheyAreOn) {
    writeSettings("<key>displayPercentage</key><false/>");
    const auto mixer = assembledMixer();
    mixer->updateSliderAndLabelForCategoryNum(0, 0.3F);
    mixer->updateSliderAndLabelForCategoryNum(1, 0.3F);
    EXPECT_EQ(mixer->captionText(0), "Ringtone");
    EXPECT_EQ(mixer->captionText(1), "Audio/Video (Speaker)");
    EXPECT_EQ(mixer->slider(0)->value(), 0.3F * 100.0F);
}

TEST_F(VolumeToSlider, WorksForEveryRowOfAListSoLongThatTagsMeet) {
    std::string records;
    for (int i = 0; i < 1002; ++i)
        records += record("C" + std::to_string(i), "c");
    writeCategories(records);
    const auto mixer = assembledMixer();
    mixer->updateSliderAndLabelForCategoryNum(1001, 0.7F);
    EXPECT_EQ(mixer->slider(1001)->value(), 0.7F * 100.0F);
    const auto row = mixer->subviews().at(1001);
    EXPECT_EQ(std::dynamic_pointer_cast<UILabel>(row->subviews().at(0))->text(), "c: 70%");
    EXPECT_EQ(mixer->slider(1)->value(), 0.0F);
}
