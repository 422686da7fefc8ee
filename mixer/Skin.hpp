#pragma once

#include <optional>
#include <string_view>

/// Components from 0 to 1.
struct SkinColor {
    double red;
    double green;
    double blue;
};

/// How the caption and the slider of a row look: names of images in the bundle, nullptr where the
/// platform's own look stays.
struct Skin {
    /// nullopt: caption and slider take the colours of the settings. A skin with a colour of its
    /// own has no tints.
    std::optional<SkinColor> captionColor;
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
