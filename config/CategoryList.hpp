#pragma once

#include "config/CategoryRecord.hpp"
#include "config/DeviceKind.hpp"

#include <optional>
#include <vector>

/// The categories in screen order, hidden ones included. A record's position is its number.
using CategoryList = std::vector<CategoryRecord>;

/// The category file's list as it stands there; nullopt when there is no readable list.
std::optional<CategoryList> categoryListFromFile();

/// The list that a new user begins with: a telephone has phone calls, an iPad or iPod video
/// conferences.
CategoryList initialCategoryList(const DeviceKind& device);

/// Replaces the category file as a whole; a failure leaves the old one and is silent, the next
/// load tries again.
void writeCategoryFile(const CategoryList& list);

/// How many categories the file shows at this moment; that of the initial list, all of which are
/// visible, while there is no readable file. Never creates it.
NSInteger visibleCategoriesInFile();
