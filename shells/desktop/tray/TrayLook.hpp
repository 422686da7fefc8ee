#pragma once

#include <optional>
#include <string>

/// What the tray shows of a volume.
struct TrayLook {
    std::string icon;  ///< Its name in the icon theme.
    std::string text;  ///< The tip at the pointer: "Media: 40%".
    bool operator==(const TrayLook&) const = default;
};

/// `fraction` is from 0 to 1; nullopt for a volume that cannot be read.
TrayLook trayLook(std::optional<float> fraction);
