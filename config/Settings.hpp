#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/foundation/PropertyValue.hpp"
#include "platform/uikit/UIColor.hpp"

/// The user's settings, with what applies where the file says nothing.
struct Settings {
    bool enableDebugLogging = false;
    bool bindRingerAndAVVolumes = false;
    bool displayPercentage = true;
    /// nil when the file holds something other than a text: no skin has such a name.
    NSString selectedSkin = "Default iOS";
    UIColor thumbTintColor = UIColor::whiteColor();
    UIColor textColor = UIColor::whiteColor();
    /// Red alone among the four: the filled part of the track has to stand out by itself.
    UIColor minimumTrackTintColor = UIColor::redColor();
    UIColor maximumTrackTintColor = UIColor::whiteColor();
};

/// The settings in the root of a settings file. Whatever is missing, or all when `root` is not a
/// dictionary, has its default; a value of a wrong kind has its reading (false, 0).
Settings settingsFrom(const PropertyValue& root);

/// Reads the settings file. Nothing is kept: an edit shows at the next call.
Settings loadedSettings();

/// The colour of a code from 0 to 9; white for every other one.
UIColor colorForCode(NSInteger code);
