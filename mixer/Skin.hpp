#pragma once

#include <optional>
#include <string_view>

/// Components from 0 to 1.
struct SkinColor {
    double red;
    double green;
    double blue;
};

enum class SkinColors {
    FromSettings,  ///< Caption and tints take the user's colours.
    Fixed,         ///< The skin brings its caption colour and no tints.
};

/// How the caption and the slider of a row look: names of images in the bundle, nullptr where the
/// platform's own look stays.
struct Skin {
    SkinColors colors;
    std::optional<SkinColor> captionColor;  ///< With SkinColors::Fixed.
    const char* thumb;
    const char* thumbHighlighted;
    const char* minimumValueImage;
    const char* maximumValueImage;
    const char* minimumTrack;
    const char* maximumTrack;
    const char* maximumTrackHighlighted;
};

/// The skin that a setting selects: "Default iOS" exactly, whatever begins with "Cream" (only
/// "Cream Round" itself with the round thumb) or with "Metal"; nullptr for every other name.
const Skin* skinNamed(std::string_view name);
