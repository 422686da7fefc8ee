#pragma once

#include "config/CategoryRecord.hpp"

#include <string>

class AVSystemController;

/// What a row is called: the record's name on the screen, with the current output behind it for
/// the categories where the output matters. Asks the service (which may be absent) afresh.
std::string captionTitle(const CategoryRecord& record, AVSystemController* service);

enum class Percentage { Hidden, Shown };

/// The caption of a row whose volume is known. `percent` is rounded to a whole number, a tie to
/// the even one.
std::string captionText(const std::string& title, float percent, Percentage percentage);

/// The caption of a row whose volume cannot be read.
std::string unknownCaptionText(const std::string& title);
