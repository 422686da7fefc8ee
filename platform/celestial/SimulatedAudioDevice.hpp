#pragma once

#include "platform/celestial/SoundServer.hpp"

#include <map>
#include <string>

/// A simulated device for tests and demonstrations. It keeps a volume, a mute, a route and whether
/// it can be read for every category that was named, and announces each change from the main loop,
/// as a real device does. It is always ready and refuses nothing.
///
///     const auto device = std::make_shared<SimulatedAudioDevice>();
///     AVSystemController::setSharedAVSystemController(device);
///     device->changeVolume("Ringtone", 0.25F);  // As another program would.
///
/// Main thread.
class SimulatedAudioDevice : public SoundServer {
 public:
    /// With the categories of the initial list and "VideoConference" at 0.5, readable, on the
    /// route "Speaker".
    SimulatedAudioDevice();

    /// A category that was never named cannot be changed.
    bool change(const Change& change, const NSString& category) override;
    std::optional<Level> levelOf(const NSString& category) override;
    NSString routeForCategory(const NSString& category) override;
    State state() const override { return State::Ready; }

    /// Creates the category if it does not exist.
    void nameCategory(const std::string& category) { categories_.try_emplace(category); }
    /// A change from elsewhere: sets the state and posts the notification. A muted category stays
    /// muted.
    void changeVolume(const std::string& category, float volume);
    /// Change the state without a notification. They create the category.
    void setReadable(const std::string& category, bool readable);
    void setRoute(const std::string& category, const NSString& route);

 private:
    struct Category {
        Level level{0.5F};
        bool readable = true;
        NSString route = "Speaker";
    };

    Category* named(const NSString& category);
    void announceLater(const std::string& category);

    std::map<std::string, Category> categories_;
};
