#include "config/Settings.hpp"

#include "config/WidgetIdentifier.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <array>

namespace {

constexpr std::array colorsByCode = {
    UIColor::redColor(),    UIColor::blackColor(), UIColor::grayColor(),   UIColor::whiteColor(),
    UIColor::greenColor(),  UIColor::blueColor(),  UIColor::yellowColor(), UIColor::orangeColor(),
    UIColor::purpleColor(), UIColor::brownColor(),
};

void readBoolean(const PropertyValue& root, const char* key, bool& setting) {
    const PropertyValue value = root.objectForKey(key);
    if (!value.isNil()) setting = value.boolValue();
}

void readColor(const PropertyValue& root, const char* key, UIColor& setting) {
    const PropertyValue value = root.objectForKey(key);
    if (!value.isNil()) setting = colorForCode(value.integerValue());
}

}  // namespace

UIColor colorForCode(NSInteger code) {
    const auto index = static_cast<std::size_t>(code);  // A negative code is far out of range.
    return index < colorsByCode.size() ? colorsByCode[index] : UIColor::whiteColor();
}

Settings settingsFrom(const PropertyValue& root) {
    Settings settings;
    readBoolean(root, "enableDebugLogging", settings.enableDebugLogging);
    readBoolean(root, "bindRingerAndAV", settings.bindRingerAndAVVolumes);
    readBoolean(root, "displayPercentage", settings.displayPercentage);
    const PropertyValue skin = root.objectForKey("selectedSkin");
    if (!skin.isNil()) settings.selectedSkin = skin.string();
    readColor(root, "thumbTintColor", settings.thumbTintColor);
    readColor(root, "textColor", settings.textColor);
    readColor(root, "minimumTrackTintColor", settings.minimumTrackTintColor);
    readColor(root, "maximumTrackTintColor", settings.maximumTrackTintColor);
    return settings;
}

Settings loadedSettings() {
    return settingsFrom(NSPropertyList::dictionaryWithContentsOfFile(settingsFilePath()));
}
