#pragma once

#include <optional>
#include <string>

/// What the tray shows of a volume.
struct TrayLook {
    std::string icon;  ///< Its name in the icon theme.
    std::string text;  ///< The tip at the pointer: "Audio/Video (Speaker): 40%".
    bool operator==(const TrayLook&) const = default;
};

/// `title` is what the volume's row is called. `fraction` is from 0 to 1; nullopt for a volume that
/// cannot be read.
TrayLook trayLook(const std::string& title, std::optional<float> fraction);
