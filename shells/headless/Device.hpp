#pragma once

#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Waiter.hpp"
#include "shells/headless/Words.hpp"

#include <memory>
#include <string>

namespace headless {

/// The device behind the volume service, for the commands: the platform's simulated one, or a sound
/// server in real time. A server cannot do everything that the simulated device can, and answers
/// that with a failure.
class Device {
 public:
    static Device simulated();
    static Device on(std::shared_ptr<SoundServer> server);

    SoundServer& server() { return *server_; }
    const std::shared_ptr<SoundServer>& shared() const { return server_; }
    /// The way to wait while the device runs. Valid as long as the device.
    Waiter& waiter() { return *waiter_; }

    /// A command named the category: it is created, or followed from now on.
    void nameCategory(const std::string& category);
    /// A change from outside the widget: the state and the notification. A sound server is changed
    /// through its own service, as another program's change would need another connection.
    Problem changeVolume(const std::string& category, float volume);
    /// Changes the state without a notification.
    Problem setReadable(const std::string& category, YesNo readable);
    Problem setRoute(const std::string& category, const NSString& route);

 private:
    Device(std::shared_ptr<SoundServer> server, std::shared_ptr<SimulatedAudioDevice> simulated,
           std::unique_ptr<Waiter> waiter);

    std::shared_ptr<SoundServer> server_;
    std::shared_ptr<SimulatedAudioDevice> simulated_;  // The same, or nullptr.
    std::unique_ptr<Waiter> waiter_;
};

}  // namespace headless
