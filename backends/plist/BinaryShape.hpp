#pragma once

#include "backends/plist/Limits.hpp"

#include <optional>
#include <string>
#include <string_view>

/// Why the library is not given this binary property list; nullopt if it can be: its objects lie
/// inside the file, none holds itself, at most NSPropertyList::maximumDepth containers lie in each
/// other, and the tree that comes of it stays within the limits. (A list of a few hundred bytes can
/// stand for a tree of any size.)
std::optional<std::string> faultInBinary(std::string_view file);
