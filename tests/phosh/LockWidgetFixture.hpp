#pragma once

#include "platform/uikit/UISlider.hpp"
#include "tests/phosh/LockedScreen.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace test {

/// The plugin in this process, on an X server of the test's own, and a sound server that the test
/// may start.
class LockWidgetFixture : public testing::Test {
 protected:
    LockWidgetFixture();
    ~LockWidgetFixture() override;

    void lock(int width = 360, int height = 600);
    void unlock() { screen.reset(); }
    /// Locks, shows the page and waits until it is seen.
    void lockAtMixer();

    /// Whether the widget is presented, by what was announced.
    bool isPresented() const { return !announced.empty() && announced.back() == "isvisible"; }
    bool waitUntilPresented() const;
    bool waitUntilDismissed() const;

    /// What the page shows, top to bottom.
    static std::vector<std::shared_ptr<UISlider>> sliders();
    static std::vector<std::string> labels();
    /// A slider's middle, in points of the page.
    static CGPoint middleOf(const UISlider& slider);

    rigs::ServerFolder folder;
    rigs::PulseAudioServer sound{folder};
    MixerFiles files;
    std::vector<std::string> announced;  ///< The ends of the notifications' names.
    std::unique_ptr<LockedScreen> screen;

 private:
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

}  // namespace test
