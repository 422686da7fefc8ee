#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/uikit/UISlider.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "tests/desktop/MainLoop.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace test {

/// The real window on a real X server, with a simulated device that the test holds, and somebody
/// to use it.
class DesktopFixture : public testing::Test {
 protected:
    DesktopFixture();
    ~DesktopFixture() override;

    /// Opens the window and waits until it has been painted.
    void open(const std::string& accessibilityModule = {});
    /// The same in a place that is made once there is a window to be shown there.
    void open(const std::string& accessibilityModule,
              const std::function<std::unique_ptr<desktop::WindowPlace>()>& place);
    /// Runs the main loop until nothing waits in it, nor on the way from the X server, and what
    /// came of it is painted.
    void settle();
    void waitForFrame();

    const std::string& displayName() const;
    /// Document order; nullptr when there are fewer.
    std::shared_ptr<UISlider> slider(std::size_t row) const;
    /// Where a view's point is on the screen, in pixels.
    CGPoint onScreen(const UIView& view, const CGPoint& point) const;
    CGPoint thumbOnScreen(std::size_t row) const;
    /// Where the first row begins, in the window.
    CGPoint rowsOrigin() const;
    CGPoint windowOrigin() const;
    CGSize windowSize() const;
    double volume(const char* category) const;
    void expectVolume(const char* category, double expected);

    MixerFiles files;
    glib::GLibRunLoop runLoop;
    std::optional<XUser> user;
    std::shared_ptr<SimulatedAudioDevice> device = std::make_shared<SimulatedAudioDevice>();
    std::unique_ptr<windowing::EventDispatcher> events;
    std::unique_ptr<shell::HostedWidget> widget;
    std::unique_ptr<desktop::DesktopWindow> window;
};

}  // namespace test
