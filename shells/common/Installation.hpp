#pragma once

#include <string>
#include <vector>

namespace shell {

/// The program's identifier for window managers, desktop files and the widget's files.
inline constexpr const char* applicationId = "org.tarnwick.mixer";

/// The program's name for users.
inline constexpr const char* applicationName = "Tarnwick";

/// The folder of the running program's file; empty if unknown.
std::string programDirectory();

/// The path of the mixer's bundle for the programs in `programFolder`, whether or not it exists: in
/// their library folder, by the same relative path in an installation and in a build tree.
std::string bundlePath(const std::string& programFolder);

/// The bundles that a shell shows, from top to bottom: the chosen ones; by default the mixer's and
/// then every other "*.bundle" in its folder, by name.
std::vector<std::string> bundlePaths(const std::vector<std::string>& chosen,
                                     const std::string& programFolder);

/// The path of a module of the programs: in the bundle's folder.
std::string modulePath(const std::string& name, const std::string& programFolder);

/// The folder of the translations' catalogs, LANGUAGE/LC_MESSAGES/tarnwick.mo.
std::string catalogFolder(const std::string& programFolder);

/// The paths of the icon in each available size, smallest first.
std::vector<std::string> iconPaths(const std::string& name, const std::string& programFolder);

}  // namespace shell
