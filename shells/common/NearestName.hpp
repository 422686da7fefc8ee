#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace shell {

/// The name that somebody meant who wrote `word`: the one with the fewest letters to change, whose
/// case does not count; nullopt when none is near.
std::optional<std::string> nearestName(std::string_view word,
                                       std::span<const std::string_view> names);

}  // namespace shell
