#pragma once

#include "mixer/TarnwickView.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// A mixer whose variables can be looked at.
class MixerUnderTest : public TarnwickView {
 public:
    using TarnwickView::_backgroundImageView;
    using TarnwickView::avs;
    using TarnwickView::bindRingerAndAVVolumes;
    using TarnwickView::categories;
    using TarnwickView::displayPercentage;
    using TarnwickView::enableDebugLogging;
    using TarnwickView::isIpad;
    using TarnwickView::isIpod;
    using TarnwickView::maximumTrackTintColor;
    using TarnwickView::minimumTrackTintColor;
    using TarnwickView::resourcesBundle;
    using TarnwickView::selectedSkin;
    using TarnwickView::TarnwickView;
    using TarnwickView::textColor;
    using TarnwickView::thumbTintColor;
    using TarnwickView::widgetWidth;

    std::shared_ptr<UISlider> slider(NSInteger number) {
        return std::dynamic_pointer_cast<UISlider>(viewWithTag(2000 + number));
    }
    std::shared_ptr<UILabel> caption(NSInteger number) {
        return std::dynamic_pointer_cast<UILabel>(viewWithTag(1000 + number));
    }
    NSString captionText(NSInteger number) {
        const auto label = caption(number);
        return label ? label->text() : std::nullopt;
    }
};

/// A volume service that does just what a test says, and notes what it is asked.
class ScriptedService : public AVSystemController {
 public:
    bool getVolume(float& volume, const NSString& category) override;
    bool setVolumeTo(float volume, const NSString& category) override;
    std::optional<Level> levelOf(const NSString& category) override;
    bool setMute(Mute mute, const NSString& category) override;
    NSString routeForCategory(const NSString& category) override;

    std::map<std::string, float> volumes;       ///< A category that is not here cannot be read.
    std::map<std::string, std::string> routes;  ///< One that is not here has no route.
    std::vector<std::pair<NSString, float>> sets;
    std::vector<NSString> routesAsked;
    std::vector<NSString> volumesAsked;
};

/// Everything that the widget stands on, for one test: an empty preferences folder, a telephone, a
/// scripted service, the log in `log`, and the real bundle.
class WidgetTest : public testing::Test {
 protected:
    void SetUp() override;
    void TearDown() override;

    void writeSettings(const std::string& entries) const;
    /// `records` is the inside of the root array.
    void writeCategories(const std::string& records) const;
    void writeCategoryFile(const std::string& text) const;
    std::filesystem::path settingsFile() const;
    std::filesystem::path categoryFile() const;
    std::string categoryFileText() const;

    /// A mixer in a superview of that width, not assembled yet.
    std::shared_ptr<MixerUnderTest> newMixer(CGFloat width = 320);
    std::shared_ptr<MixerUnderTest> assembledMixer(CGFloat width = 320);
    void assemble(MixerUnderTest& mixer);

    /// Posts the volume notification; a missing entry with nullopt.
    static void announce(const NSString& category, std::optional<double> volume);
    std::size_t timesLogged(const std::string& line) const;

    std::filesystem::path folder;
    std::vector<std::string> log;
    std::shared_ptr<ScriptedService> service;
    std::shared_ptr<UIView> parent;
    std::shared_ptr<NSBundle> bundle;
};

/// One record of the category file. An empty `visible` leaves the key out.
std::string record(const std::string& name, const std::string& pretty,
                   const std::string& visible = "<true/>");
