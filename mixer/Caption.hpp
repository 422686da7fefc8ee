#pragma once

#include "config/CategoryRecord.hpp"

#include <string>

class AVSystemController;

/// What a row is called: the record's name on the screen, with the current output behind it for
/// the categories where the output matters. Asks the service (which may be absent) afresh.
std::string captionTitle(const CategoryRecord& record, AVSystemController* service);

enum class Percentage { Hidden, Shown };

/// "40%": rounded to a whole number, a tie to the even one.
std::string percentText(float percent);

/// The caption of a row whose volume is known.
std::string captionText(const std::string& title, float percent, Percentage percentage);

/// What stands in a volume's place where it cannot be read.
inline constexpr const char* unknownVolume = "unknown";

/// The caption of a row whose volume cannot be read.
std::string unknownCaptionText(const std::string& title);
