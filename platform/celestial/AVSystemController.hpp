#pragma once

#include "platform/foundation/NSObject.hpp"

#include <memory>

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

    /// Sets `volume` (0 to 1) and answers true; leaves it alone and answers false when the
    /// category has no volume that could be read now.
    virtual bool getVolume(float& volume, const NSString& category) = 0;
    /// Sends the volume (kept within 0 to 1) on its way and returns. False when there is no such
    /// category to set.
    virtual bool setVolumeTo(float volume, const NSString& category) = 0;
    /// The name of the output that the category plays on; nil when there is none.
    virtual NSString routeForCategory(const NSString& category) = 0;
};

/// Announces a volume in the default notification centre. For implementations of the service.
void postEffectiveVolumeDidChange(const NSString& category, float volume);
