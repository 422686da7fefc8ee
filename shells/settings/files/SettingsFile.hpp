#pragma once

#include "config/Settings.hpp"
#include "shells/settings/files/MixerFile.hpp"

#include <string>

namespace settings {

/// The keys of the settings file.
namespace SettingsKey {
inline constexpr const char* enableDebugLogging = "enableDebugLogging";
inline constexpr const char* bindRingerAndAV = "bindRingerAndAV";
inline constexpr const char* displayPercentage = "displayPercentage";
inline constexpr const char* selectedSkin = "selectedSkin";
inline constexpr const char* thumbTintColor = "thumbTintColor";
inline constexpr const char* textColor = "textColor";
inline constexpr const char* minimumTrackTintColor = "minimumTrackTintColor";
inline constexpr const char* maximumTrackTintColor = "maximumTrackTintColor";
}  // namespace SettingsKey

/// The settings. What is missing in the file, or all without one, has its default.
///
///     SettingsFile file;
///     showPercentage(file.values().displayPercentage);
///     tell(file.set(SettingsKey::textColor, PropertyValue(5)));
///     tell(file.useDefault(SettingsKey::textColor));
class SettingsFile : public MixerFile {
 public:
    SettingsFile();

    /// As the widget reads them.
    Settings values() const { return settingsFrom(root()); }
    /// The code, from 0 to 9, of a colour in values().
    static NSInteger codeOf(const UIColor& color);
    /// Whether the file says anything for the key.
    bool isSet(const std::string& key) const { return !root().objectForKey(key).isNil(); }

    [[nodiscard]] Trouble set(const std::string& key, const PropertyValue& value);
    /// Several at once, in a single write; a key with nil is removed.
    [[nodiscard]] Trouble set(const PropertyValue::Dictionary& entries);
    /// Removes the key.
    [[nodiscard]] Trouble useDefault(const std::string& key);
};

}  // namespace settings
