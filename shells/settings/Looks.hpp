#pragma once

#include "config/Settings.hpp"
#include "platform/foundation/PropertyValue.hpp"

#include <array>
#include <span>
#include <string>

namespace settings {

/// The context in which the colours' names are translated.
inline constexpr const char* colorContext = "color";

/// A colour that the settings file can name by its code.
struct NamedColor {
    int code;
    const char* name;  ///< For people, to be translated.
};
/// By code.
std::span<const NamedColor> palette();

/// The parts of a row that have a colour in the settings.
struct ColoredPart {
    const char* key;   ///< In the settings file.
    const char* name;  ///< For people, to be translated.
    UIColor Settings::*color;
};
std::span<const ColoredPart> coloredParts();

/// The ratio of luminances between the colour and the mixer's panel, from 1 to 21, as the Web
/// Content Accessibility Guidelines define it.
double contrastOnPanel(const UIColor& color);
/// Below it, parts of a control are hard to tell from what is behind them; from the same
/// guidelines.
inline constexpr double leastContrast = 3;

/// Whether a skin of that name takes the colours of the settings.
bool takesColors(const NSString& skin);

struct NamedSkin {
    const char* skin;  ///< In the settings file.
    const char* name;  ///< For people, to be translated.
};
std::span<const NamedSkin> skins();

/// A skin and colours that look good together.
struct Look {
    const char* name;
    const char* skin;
    std::array<int, 4> colors;  ///< Codes, in the order of coloredParts().
};
std::span<const Look> looksToStartWith();

/// A settings file with that look alone, and a list of a single row: what is painted to show it.
PropertyValue settingsOf(const Look& look);
PropertyValue singleRow(const std::string& caption);

}  // namespace settings
