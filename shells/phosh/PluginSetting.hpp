#pragma once

#include <string>
#include <vector>

/// Where the plugin finds what it shows. Everything is told relative to the plugin's own file, so
/// that it works from an installation, from a build tree and from where it was moved to.
struct PluginSetting {
    std::vector<std::string> bundles;  ///< From top to bottom.
    std::string soundModule;           ///< The sound server's module.
};

/// For trying it out, $TARNWICK_BUNDLE names another bundle. Empty where the plugin's file cannot
/// be told.
PluginSetting pluginSetting();

/// Sets up, the first time only, what belongs to this process and not to a widget: the libraries
/// behind the platform, the text's colour on a lock screen's black, the machine model of a phone
/// where the machine says nothing of itself. $TARNWICK_PREFERENCES names another folder for the
/// mixer's files.
void preparePlatform();
