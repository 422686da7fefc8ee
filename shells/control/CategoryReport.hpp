#pragma once

#include "config/CategoryRecord.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "shells/common/Json.hpp"
#include "shells/control/Table.hpp"

#include <optional>
#include <string>

namespace control {

/// What is told of a category.
struct CategoryReport {
    NSString category;
    std::string caption;  ///< As its row is called, with the output where the mixer says it.
    std::optional<AVSystemController::Level> level;  ///< nullopt when it cannot be read.
    NSString route;
};

/// Its state now.
CategoryReport reportOf(const CategoryRecord& record, AVSystemController& service);

/// What is heard, as the mixer words it: "40%", "0%" of what is muted, or "unknown".
std::string volumeText(const CategoryReport& report);

/// The columns of a report's row.
const Row& reportHeading();
Row rowFrom(const CategoryReport& report);
shell::Json jsonFrom(const CategoryReport& report);

}  // namespace control
