#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace shell {

/// The name that was probably meant by `word`: the one that takes the fewest changed letters,
/// regardless of case; nullopt if none is near.
std::optional<std::string> nearestName(std::string_view word,
                                       std::span<const std::string_view> names);

}  // namespace shell
