#pragma once

#include <string>

/// The one folder of settings that the widget's code names.
inline constexpr const char* fixedPreferencesDirectory = "/var/mobile/Library/Preferences/";

/// The actual location of the fixed folder: the folder that a shell set; else the fixed folder
/// itself, if it exists; else $XDG_CONFIG_HOME/tarnwick/ (~/.config/tarnwick/). Ends with a slash.
/// Creates nothing.
std::string preferencesDirectory();

/// Points the fixed folder elsewhere, for a shell's --preferences; an empty text undoes it.
void setPreferencesDirectory(const std::string& directory);

/// The file behind a path: paths under the fixed folder move to preferencesDirectory(), every
/// other path stays as it is.
std::string resolvedPath(const std::string& path);
