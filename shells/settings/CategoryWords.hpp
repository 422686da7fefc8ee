#pragma once

#include "platform/foundation/NSString.hpp"

#include <string>
#include <vector>

namespace settings {

/// What a category moves, in a few words for people: "Phone calls", "Everything that Firefox
/// plays". A category that the mixer does not know is named as it is written.
std::string wordsFor(const NSString& category);

/// The caption that a new row of the category gets: "Calls", "Firefox".
std::string captionFor(const std::string& category);

/// An icon's name in every theme for the category.
const char* iconFor(const std::string& category);

/// The categories that need no server to be offered: the six that the mixer brings.
const std::vector<std::string>& ownCategories();

}  // namespace settings
