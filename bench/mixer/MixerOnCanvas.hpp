#pragma once

#include "backends/cairo/Handles.hpp"
#include "mixer/TarnwickView.hpp"
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <filesystem>
#include <memory>
#include <string>

/// A mixer with the given number of visible categories, in a window that paints onto a surface. Has
/// its own preferences folder, and a clock that stands still.
class MixerOnCanvas {
 public:
    explicit MixerOnCanvas(int categories);
    ~MixerOnCanvas();

    /// Clears the mixer and assembles it anew.
    void assemble();
    /// Posts a volume notification for the category in the middle, with a new volume each time.
    void announce();
    /// Presses the slider in the middle, so that dragStep() can move it.
    void press();
    /// Moves the finger by one point, back and forth.
    void dragStep();
    /// Paints all damage and returns its area in square points.
    double paintDamage();
    void damageEverything() { window_->setNeedsDisplay(); }

    TarnwickView& mixer() { return *mixer_; }

 private:
    void paint(const CGRect& damage);
    std::string nameInTheMiddle() const;

    std::filesystem::path folder_;
    int categories_;
    int step_ = 0;
    CGPoint finger_;
    std::shared_ptr<SimulatedAudioDevice> device_;
    std::shared_ptr<UIWindow> window_;
    std::shared_ptr<TarnwickView> mixer_;
    std::shared_ptr<NSBundle> bundle_;
    painting::CairoSurface surface_;
};
