#pragma once

#include "config/CategoryList.hpp"
#include "platform/foundation/NSObject.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace desktop {

/// The volume of media, for controls outside the mixer's rows. Uses the installed volume service,
/// whose notification updates the rows. Main thread.
class MediaVolume {
 public:
    MediaVolume();
    ~MediaVolume();
    MediaVolume(const MediaVolume&) = delete;
    MediaVolume& operator=(const MediaVolume&) = delete;

    /// The title of its row: the user's name for it and the output.
    std::string title() const;
    /// Reads that name again, as the rows do each time the mixer opens.
    void readName();
    /// The volume as heard, 0 to 1; nullopt while it cannot be read.
    std::optional<float> fraction() const;
    /// Steps the volume up or down, clamped to 0 to 1, and unmutes it. Has no effect while it
    /// cannot be read.
    void changeBy(float fraction);
    /// Mutes, or unmutes to the previous level; to the middle if that was silence, too.
    void toggleSilence();

    /// Called when the volume may have changed.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
    CategoryRecord record_;
    std::shared_ptr<NSObject> observer_;
    std::function<void()> changeHandler_;
};

/// What the tray icon shows of a volume.
struct TrayLook {
    std::string icon;  ///< Its name in the icon theme.
    std::string text;  ///< The tip at the pointer: "Audio/Video (Speaker): 40%".
    bool operator==(const TrayLook&) const = default;
};

/// `title` is the name of the volume's row. `fraction` is from 0 to 1; nullopt for a volume that
/// cannot be read.
TrayLook trayLook(const std::string& title, std::optional<float> fraction);

/// The change of a volume (0 to 1) by a turn of the wheel over the tray's icon: five percent a
/// notch, up when turned away from the user. `delta` is as the tray's host sends it; `orientation`
/// is "vertical" or "horizontal" in any case; horizontal turns have no effect.
float volumeChangeByScroll(int delta, std::string_view orientation);

}  // namespace desktop
