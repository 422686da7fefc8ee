#pragma once

#include <optional>
#include <string>

namespace shell {

/// The folder of the running program's file; empty when it cannot be told.
std::string programDirectory();

/// Where the widget's bundle lies: the chosen folder; else beside a program in `programFolder`, in
/// an installation's library folder or in a build tree's. The installation's place when neither
/// exists, so that a complaint can name it.
std::string bundlePath(const std::optional<std::string>& chosen, const std::string& programFolder);

/// Where a module that belongs to the programs lies: beside the bundle.
std::string modulePath(const std::string& name, const std::string& programFolder);

}  // namespace shell
