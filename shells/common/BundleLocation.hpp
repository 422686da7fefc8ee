#pragma once

#include <string>
#include <vector>

namespace shell {

/// The folder of the running program's file; empty when it cannot be told.
std::string programDirectory();

/// Where the mixer's bundle lies, or would lie, for the programs in `programFolder`: in their
/// library folder, to which the same way leads in an installation and in a build tree.
std::string bundlePath(const std::string& programFolder);

/// The bundles that a shell shows, from top to bottom: the chosen ones; if none was, the mixer's
/// and below it every other "*.bundle" folder beside it, by name.
std::vector<std::string> bundlePaths(const std::vector<std::string>& chosen,
                                     const std::string& programFolder);

/// Where a module that belongs to the programs lies: beside the bundle.
std::string modulePath(const std::string& name, const std::string& programFolder);

/// Where an icon of that name lies for the programs, in each size that there is; smallest first.
std::vector<std::string> iconPaths(const std::string& name, const std::string& programFolder);

}  // namespace shell
