#pragma once

#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

#include <string>

/// The widget's name among all: its two files and two notifications are named after it.
inline constexpr const char* WidgetIdentifier = "org.tarnwick.mixer";

inline std::string settingsFilePath() {
    return std::string(fixedPreferencesDirectory) + WidgetIdentifier + "prefs.plist";
}
inline std::string categoryFilePath() {
    return std::string(fixedPreferencesDirectory) + WidgetIdentifier + ".categories.plist";
}
inline std::string visibleNotificationName() {
    return std::string(WidgetIdentifier) + ".isvisible";
}
inline std::string hiddenNotificationName() {
    return std::string(WidgetIdentifier) + ".ishidden";
}

/// Tells the default notification centre that the widget is on the screen, or is not.
inline void postVisibleNotification() {
    NSNotificationCenter::defaultCenter().postNotificationName(visibleNotificationName(), nullptr);
}
inline void postHiddenNotification() {
    NSNotificationCenter::defaultCenter().postNotificationName(hiddenNotificationName(), nullptr);
}
