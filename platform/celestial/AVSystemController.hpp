#pragma once

#include "platform/foundation/NSObject.hpp"

#include <memory>
#include <optional>
#include <string_view>

/// The volume notification and the entries of its userInfo: the category's name, and the new volume
/// as a number from 0 to 1.
inline constexpr const char* AVSystemController_EffectiveVolumeDidChangeNotification =
    "AVSystemController_EffectiveVolumeDidChangeNotification";
inline constexpr const char* AVSystemController_EffectiveVolumeNotificationParameter_Category =
    "AVSystemController_EffectiveVolumeNotificationParameter_Category";
inline constexpr const char* AVSystemController_EffectiveVolumeNotificationParameter_Volume =
    "AVSystemController_EffectiveVolumeNotificationParameter_Volume";

/// The names of the device's own categories, as the category file and sound servers use them. A
/// category may have another name too, which says what it stands for by a scheme ("app:NAME").
namespace AudioCategory {
inline constexpr const char* ringtone = "Ringtone";
inline constexpr const char* audioVideo = "Audio/Video";
inline constexpr const char* headsetBT = "HeadsetBT";
inline constexpr const char* headphonesBT = "HeadphonesBT";
inline constexpr const char* phoneCall = "PhoneCall";
inline constexpr const char* videoConference = "VideoConference";
inline constexpr std::string_view all[] = {ringtone,     audioVideo, headsetBT,
                                           headphonesBT, phoneCall,  videoConference};
}  // namespace AudioCategory

/// The system's volumes, one for each audio category. Answers come from a mirror of the device's
/// state and never block. Every change, whoever made it, is announced in the default notification
/// centre from the main loop, never from inside a call of this class.
///
///     const auto avs = AVSystemController::sharedAVSystemController();
///     float volume = 0;
///     if (avs && avs->getVolume(volume, "Ringtone")) avs->setVolumeTo(volume / 2, "Ringtone");
///
/// Main thread.
class AVSystemController : public NSObject {
 public:
    std::string_view className() const override { return "AVSystemController"; }

    /// The instance that the shell installed; nullptr without one.
    static std::shared_ptr<AVSystemController> sharedAVSystemController();
    static void setSharedAVSystemController(std::shared_ptr<AVSystemController> controller);

    enum class Mute { Off, On };
    /// A category's volume and mute.
    struct Level {
        float volume = 0;  ///< 0 to 1; while muted, the volume that unmuting restores.
        Mute mute = Mute::Off;
        float heard() const { return mute == Mute::On ? 0 : volume; }
        bool operator==(const Level&) const = default;
    };

    /// Stores the volume as heard (0 to 1; 0 while muted) in `volume` and returns true. Returns
    /// false and leaves `volume` alone if the category cannot be read now.
    virtual bool getVolume(float& volume, const NSString& category) = 0;
    /// Sends the volume (clamped to 0 to 1), unmutes, and returns at once. False if there is no
    /// such category to set.
    virtual bool setVolumeTo(float volume, const NSString& category) = 0;
    /// nullopt if the category cannot be read now.
    virtual std::optional<Level> levelOf(const NSString& category) = 0;
    /// Mutes the category, which keeps its volume, or unmutes it; sent like a volume. False if
    /// there is no such category.
    virtual bool setMute(Mute mute, const NSString& category) = 0;
    /// The name of the output that the category plays on; nil if there is none.
    virtual NSString routeForCategory(const NSString& category) = 0;

    /// Changes the volume by a step (-1 to 1), clamped to 0 to 1. A muted category is unmuted, and
    /// the step starts at the volume behind the mute. A step beyond an end changes nothing, so a
    /// volume amplified above 100 % stays. False if there is nothing to set.
    bool stepVolumeBy(double step, const NSString& category);
    /// Mutes an unmuted category and unmutes a muted one. False if there is nothing to mute.
    bool toggleMute(const NSString& category);
};

/// Announces a volume in the default notification centre. For implementations of the service.
void postEffectiveVolumeDidChange(const NSString& category, float volume);
