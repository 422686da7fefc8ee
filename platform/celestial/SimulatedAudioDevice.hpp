#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <map>
#include <string>

/// A device without sound, for tests and demonstrations: it keeps a volume, a mute, a route and a
/// readability for every category that was named to it, and announces every change from the main
/// loop, as a real device does. Main thread.
class SimulatedAudioDevice : public AVSystemController {
 public:
    /// With the categories of the initial list and "VideoConference" at 0.5, readable, on the
    /// route "Speaker".
    SimulatedAudioDevice();

    bool getVolume(float& volume, const NSString& category) override;
    /// A category that nobody named yet has no volume to set.
    bool setVolumeTo(float volume, const NSString& category) override;
    std::optional<Level> levelOf(const NSString& category) override;
    bool setMute(Mute mute, const NSString& category) override;
    NSString routeForCategory(const NSString& category) override;

    /// The category comes into being if there is none of that name.
    void nameCategory(const std::string& category) { categories_.try_emplace(category); }
    /// A change made elsewhere on the device: the state and the notification. What is muted stays
    /// so.
    void changeVolume(const std::string& category, float volume);
    /// These change the state without a notification. A category comes into being with its name.
    void setReadable(const std::string& category, bool readable);
    void setRoute(const std::string& category, const NSString& route);

    /// Called for every setVolumeTo(), with the volume as it was given.
    void setSetVolumeObserver(
        std::function<void(const NSString& category, float volume)> observer) {
        observer_ = std::move(observer);
    }

 private:
    struct Category {
        Level level{0.5F};
        bool readable = true;
        NSString route = "Speaker";
    };

    Category* named(const NSString& category);
    void announceLater(const std::string& category);

    std::map<std::string, Category> categories_;
    std::function<void(const NSString&, float)> observer_;
};
