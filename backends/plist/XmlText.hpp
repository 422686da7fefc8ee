#pragma once

#include <string_view>

/// Whether XML can carry the text: valid UTF-8 of characters that XML allows (no control
/// characters but tab and the line breaks).
bool canStandInXml(std::string_view text);
