#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "backends/pulse/PulseAudioController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "tests/pulse/PrivatePulseServer.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The real service against a real server, on a GLib loop in real time.
class PulseFixture : public testing::Test {
 protected:
    struct Posted {
        std::string category;
        float volume = 0;
    };

    PulseFixture();
    ~PulseFixture() override;

    void startController();
    /// Starts both and waits until the service is ready.
    void startBoth();

    /// Runs the loop until the condition holds; false when it doesn't in time.
    static bool waitUntil(const std::function<bool()>& condition, double seconds = 10);
    /// Runs the loop for that long, for what must not happen.
    static void runFor(double seconds);

    /// -1 when it can't be read.
    float volumeOf(const std::string& category);
    bool isReady() const { return controller_->state() == PulseAudioController::State::Ready; }
    bool isUnavailable() const {
        return controller_->state() == PulseAudioController::State::Unavailable;
    }
    /// Waits until the category shows the volume and the notification has said so.
    bool waitForVolume(const std::string& category, float volume);
    const Posted* lastPosted(const std::string& category) const;

    PrivatePulseServer server_;
    GLibRunLoop loop_;
    std::shared_ptr<PulseAudioController> controller_;
    std::vector<Posted> posted_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

inline constexpr float unreadable = -1;
/// Half the server's smallest step.
inline constexpr float volumeTolerance = 0.5F / 65536;
