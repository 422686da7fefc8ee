#pragma once

#include "config/CategoryList.hpp"

#include <string>

namespace control {

/// The mixer's categories in its order, hidden ones too: those of the category file, or the list
/// that the mixer would begin with. Writes nothing.
CategoryList mixerCategories();

/// A category that the user named, or why it cannot be told which.
struct FoundCategory {
    std::optional<CategoryRecord> record;
    std::string error;
};
/// The category of exactly that name; else the one whose caption it is, if there is only one; else
/// the name goes to the sound server as it is, which knows more than a mixer shows.
FoundCategory categoryCalled(const std::string& name, const CategoryList& categories);

}  // namespace control
