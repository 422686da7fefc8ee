#pragma once

#include "mixer/TarnwickView.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "tests/support/MixerFiles.hpp"

#include <memory>
#include <string>
#include <vector>

/// A real mixer in a window, on whatever service is given, with files of its own. One at a time.
class LiveMixer {
 public:
    /// Rows for these categories, captioned with their percentages. `moreSettings` are further
    /// entries of the settings file, as XML.
    LiveMixer(std::shared_ptr<AVSystemController> service,
              const std::vector<std::string>& categories, const std::string& moreSettings = "");
    ~LiveMixer();
    LiveMixer(const LiveMixer&) = delete;
    LiveMixer& operator=(const LiveMixer&) = delete;

    const std::shared_ptr<UIWindow>& window() { return window_; }
    std::string caption(NSInteger row) const;
    float sliderValue(NSInteger row) const;
    void updateValues() { mixer_->updateValues(); }

    /// A finger on the row's thumb, moved to that part of the slider's length, and lifted.
    void press(NSInteger row);
    void dragTo(NSInteger row, double fraction);
    void lift();

 private:
    std::shared_ptr<UISlider> slider(NSInteger row) const;

    test::MixerFiles files_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<TarnwickView> mixer_;
    CGPoint finger_{};
};

/// The settings entry that binds ringer and media.
inline constexpr const char* bound = "<key>bindRingerAndAV</key><true/>";
