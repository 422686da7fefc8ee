#pragma once

#include "platform/foundation/NSObject.hpp"

#include <memory>
#include <optional>

/// The volume notification and its two entries: the category's name, and the new volume as a
/// number from 0 to 1.
inline constexpr const char* AVSystemController_EffectiveVolumeDidChangeNotification =
    "AVSystemController_EffectiveVolumeDidChangeNotification";
inline constexpr const char* AVSystemController_EffectiveVolumeNotificationParameter_Category =
    "AVSystemController_EffectiveVolumeNotificationParameter_Category";
inline constexpr const char* AVSystemController_EffectiveVolumeNotificationParameter_Volume =
    "AVSystemController_EffectiveVolumeNotificationParameter_Volume";

/// The system's volumes, one for each audio category. Answers come from a mirror of the device's
/// state and never block. A change, whoever made it, is announced in the default notification
/// centre from the main loop, never from inside a call of this class. Main thread.
class AVSystemController : public NSObject {
 public:
    std::string_view className() const override { return "AVSystemController"; }

    /// The one that the shell installed; nullptr when there is none.
    static std::shared_ptr<AVSystemController> sharedAVSystemController();
    static void setSharedAVSystemController(std::shared_ptr<AVSystemController> controller);

    enum class Mute { Off, On };
    /// What a category is at, whether it is heard or not.
    struct Level {
        float volume = 0;  ///< 0 to 1; of what is muted, the volume that unmuting brings back.
        Mute mute = Mute::Off;
        float heard() const { return mute == Mute::On ? 0 : volume; }
        bool operator==(const Level&) const = default;
    };

    /// Sets `volume` (0 to 1, what is heard: 0 while it is muted) and answers true; leaves it alone
    /// and answers false when the category has no volume that could be read now.
    virtual bool getVolume(float& volume, const NSString& category) = 0;
    /// Sends the volume (kept within 0 to 1) on its way, unmutes, and returns. False when there is
    /// no such category to set.
    virtual bool setVolumeTo(float volume, const NSString& category) = 0;
    /// nullopt when the category has no volume that could be read now.
    virtual std::optional<Level> levelOf(const NSString& category) = 0;
    /// Silences the category, which keeps its volume, or lets it be heard again; sent on its way as
    /// a volume is. False when there is no such category to mute.
    virtual bool setMute(Mute mute, const NSString& category) = 0;
    /// The name of the output that the category plays on; nil when there is none.
    virtual NSString routeForCategory(const NSString& category) = 0;

    /// Moves the volume by a step (-1 to 1) from where it stands, kept within 0 and 1. What is
    /// muted is heard again, at the volume that it had and the step. A step against the end of the
    /// scale moves nothing, so what is amplified beyond it stays. False when there is nothing to
    /// move.
    bool stepVolumeBy(double step, const NSString& category);
    /// Mutes what is heard, and the other way round. False when there is nothing to mute.
    bool toggleMute(const NSString& category);
};

/// Announces a volume in the default notification centre. For implementations of the service.
void postEffectiveVolumeDidChange(const NSString& category, float volume);
