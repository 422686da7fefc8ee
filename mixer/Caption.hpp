#pragma once

#include "config/CategoryList.hpp"

#include <string>

class AVSystemController;

/// The title of a row: the record's display name, followed by the current route in parentheses for
/// the categories where it matters. Asks the service (which may be nullptr) each time.
std::string captionTitle(const CategoryRecord& record, AVSystemController* service);

enum class Percentage { Hidden, Shown };

/// "40%": rounded to a whole number, a tie to the even one. What rounds to 0 from below is "-0%",
/// as formatted output has it.
std::string percentText(float percent);

/// The caption of a row whose volume is known.
std::string captionText(const std::string& title, float percent, Percentage percentage);

/// Stands in the place of a volume that cannot be read.
inline constexpr const char* unknownVolume = "unknown";

/// The caption of a row whose volume cannot be read.
std::string unknownCaptionText(const std::string& title);

/// A slider shows the service's fraction (0 to 1) as a percentage (0 to 100), in single precision
/// both ways.
constexpr float percentFromFraction(float fraction) {
    return fraction * 100.0F;
}
constexpr float fractionFromPercent(float percent) {
    return percent / 100.0F;
}
