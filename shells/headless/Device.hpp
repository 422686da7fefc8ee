#pragma once

#include "platform/celestial/AVSystemController.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Waiter.hpp"
#include "shells/headless/Words.hpp"

#include <functional>
#include <memory>
#include <string>

class SoundServer;

namespace headless {

/// The device behind the volume service, as the commands handle it. A device that cannot do one of
/// these says so by a failure.
class Device {
 public:
    virtual ~Device() = default;

    virtual std::shared_ptr<AVSystemController> service() = 0;
    using SetVolumeObserver = std::function<void(const NSString& category, float volume)>;
    /// Called for every volume that the widget sends, with the volume as it was given.
    virtual void observeSetVolume(SetVolumeObserver observer) = 0;

    enum class ServerEvent {
        BeganToAnswer,
        CeasedToAnswer,
        AvailabilityChanged,  ///< Rows have to be read again and no notification says so.
    };
    using ServerObserver = std::function<void(ServerEvent)>;
    /// Told of a server behind the device, from the main loop.
    virtual void observeServer(ServerObserver observer) = 0;
    /// How to wait while the device goes on. As long as the device.
    virtual Waiter& waiter() = 0;
    /// Whether its volumes are known.
    virtual bool isReady() const = 0;
    /// Whether what was set has not reached it yet.
    virtual bool isWriting() const = 0;

    /// A command spoke of the category: from now on there is one.
    virtual void nameCategory(const std::string& category) = 0;
    /// A change by someone else: the state and the notification.
    virtual Failure changeVolume(const std::string& category, float volume) = 0;
    /// The state without a notification.
    virtual Failure setReadable(const std::string& category, YesNo readable) = 0;
    virtual Failure setRoute(const std::string& category, const NSString& route) = 0;
};

/// The platform's simulated device.
std::unique_ptr<Device> makeSimulatedDevice();
/// A sound server's volumes, in real time. "volume" goes through the server's own service, as
/// another program's change would be another connection's.
std::unique_ptr<Device> makeServerDevice(std::unique_ptr<SoundServer> server);

}  // namespace headless
