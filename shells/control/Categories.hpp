#pragma once

#include "config/CategoryList.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/Result.hpp"
#include "shells/common/Json.hpp"
#include "shells/control/Output.hpp"

#include <optional>
#include <string>

namespace control {

/// The mixer's categories in its order, including hidden ones: those of the category file, or the
/// default list. Writes nothing.
CategoryList mixerCategories();

/// The category that the user means: the one of exactly that name, else the one with that caption;
/// else a record of that name, since the sound server knows more categories than the file. Fails if
/// several have that caption.
Result<CategoryRecord> categoryCalled(const std::string& name, const CategoryList& categories);

/// What the program prints of a category.
struct CategoryReport {
    NSString category;
    std::string caption;  ///< The title of its row, with the output if the mixer shows it.
    std::optional<AVSystemController::Level> level;  ///< nullopt when it cannot be read.
    NSString route;
};

/// Its state now.
CategoryReport reportOf(const CategoryRecord& record, AVSystemController& service);

/// The volume as heard, in the mixer's words: "40%", "0%" while muted, or "unknown".
std::string volumeText(const CategoryReport& report);

/// The columns of a report's row.
Row reportHeading();
Row rowFrom(const CategoryReport& report);
shell::Json jsonFrom(const CategoryReport& report);

}  // namespace control
