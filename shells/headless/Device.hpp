#pragma once

#include "platform/celestial/AVSystemController.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Words.hpp"

#include <functional>
#include <memory>
#include <string>

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

}  // namespace headless
