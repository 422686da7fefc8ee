#include "shells/settings/files/SettingsFile.hpp"

#include "config/WidgetIdentifier.hpp"

namespace settings {

SettingsFile::SettingsFile()
    : MixerFile(settingsFilePath(), Root::Dictionary, PropertyValue(PropertyValue::Dictionary{})) {}

NSInteger SettingsFile::codeOf(const UIColor& color) {
    constexpr NSInteger codes = 10;
    for (NSInteger code = 0; code < codes; ++code)
        if (colorForCode(code) == color) return code;
    return codes;
}

Trouble SettingsFile::set(const std::string& key, const PropertyValue& value) {
    return set({{key, value}});
}

Trouble SettingsFile::set(const PropertyValue::Dictionary& entries) {
    return edit([&](PropertyListEditor& list) -> Trouble {
        for (const auto& [key, value] : entries) {
            const auto refusal = value.isNil() ? list.removeKey({}, key) : list.set({}, key, value);
            if (refusal) return sentenceFor(refusal);
        }
        return std::nullopt;
    });
}

Trouble SettingsFile::useDefault(const std::string& key) {
    return set(key, PropertyValue());
}

}  // namespace settings
