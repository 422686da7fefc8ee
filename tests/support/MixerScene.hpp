#pragma once

#include "mixer/TarnwickView.hpp"
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "tests/support/MixerFiles.hpp"

#include <memory>
#include <string>
#include <vector>

/// What stands in the settings file of a scene; colours by their codes there, the defaults.
struct SceneSettings {
    std::string skin = "Default iOS";
    int thumb = 3;
    int text = 3;
    int minimumTrack = 0;
    int maximumTrack = 3;
    std::string more = {};  ///< Further entries as XML.
};

/// A real mixer in a window, on the simulated device, with files of its own. One scene after the
/// other: the device, the folder and the clock are shared.
class MixerScene {
 public:
    /// Rows for these categories, `width` points wide, on `background`.
    MixerScene(const SceneSettings& settings, const std::vector<test::CategoryEntry>& categories,
               CGFloat width, const UIColor& background = panelColor);
    ~MixerScene();
    MixerScene(const MixerScene&) = delete;
    MixerScene& operator=(const MixerScene&) = delete;

    const std::shared_ptr<UIWindow>& window() { return window_; }
    std::shared_ptr<UISlider> slider(NSInteger number);
    /// A finger on the thumb of the slider.
    void holdThumb(NSInteger number);

    static constexpr UIColor panelColor = {28.0 / 255, 28.0 / 255, 30.0 / 255, 1};
    /// The five categories of a telephone, by the names that a user would give them.
    static std::vector<test::CategoryEntry> fiveCategories();
    /// The device that all scenes show, with a different volume for each category.
    static SimulatedAudioDevice& device();

 private:
    test::MixerFiles files_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<TarnwickView> mixer_;
};
