#include "shells/settings/Looks.hpp"

#include "mixer/Skin.hpp"
#include "shells/common/Translation.hpp"
#include "shells/panel/PanelView.hpp"

#include <algorithm>
#include <cmath>

namespace settings {
namespace {

constexpr std::array namedColors{
    NamedColor{0, shell::translatableIn("color", "Red")},
    NamedColor{1, shell::translatableIn("color", "Black")},
    NamedColor{2, shell::translatableIn("color", "Gray")},
    NamedColor{3, shell::translatableIn("color", "White")},
    NamedColor{4, shell::translatableIn("color", "Green")},
    NamedColor{5, shell::translatableIn("color", "Blue")},
    NamedColor{6, shell::translatableIn("color", "Yellow")},
    NamedColor{7, shell::translatableIn("color", "Orange")},
    NamedColor{8, shell::translatableIn("color", "Purple")},
    NamedColor{9, shell::translatableIn("color", "Brown")},
};

constexpr std::array parts{
    ColoredPart{"textColor", shell::translatable("Text"), &Settings::textColor},
    ColoredPart{"thumbTintColor", shell::translatable("Thumb"), &Settings::thumbTintColor},
    ColoredPart{"minimumTrackTintColor", shell::translatable("Filled track"),
                &Settings::minimumTrackTintColor},
    ColoredPart{"maximumTrackTintColor", shell::translatable("Empty track"),
                &Settings::maximumTrackTintColor},
};

constexpr std::array namedSkins{
    NamedSkin{"Default iOS", shell::translatable("Plain")},
    NamedSkin{"Cream", shell::translatable("Cream")},
    NamedSkin{"Cream Round", shell::translatable("Cream, round")},
    NamedSkin{"Metal", shell::translatable("Metal")},
};

enum Code { Red = 0, Gray = 2, White = 3, Green = 4, Yellow = 6, Orange = 7, Brown = 9 };

constexpr std::array looks{
    Look{shell::translatable("Classic"), "Default iOS", {White, White, Red, White}},
    Look{shell::translatable("Quiet"), "Default iOS", {White, White, White, Gray}},
    Look{shell::translatable("Meadow"), "Default iOS", {White, White, Green, Gray}},
    Look{shell::translatable("Amber"), "Default iOS", {Yellow, Orange, Orange, Brown}},
    Look{shell::translatable("Cream"), "Cream Round", {White, White, Red, White}},
    Look{shell::translatable("Steel"), "Metal", {White, White, Red, White}},
};

double linear(double component) {
    constexpr double knee = 0.04045;
    return component <= knee ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const UIColor& color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

std::span<const NamedColor> palette() {
    return namedColors;
}

std::span<const ColoredPart> coloredParts() {
    return parts;
}

std::span<const NamedSkin> skins() {
    return namedSkins;
}

std::span<const Look> looksToStartWith() {
    return looks;
}

double contrastOnPanel(const UIColor& color) {
    const double one = luminance(color) + 0.05;
    const double other = luminance(shell::panelColor) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

bool takesColors(const NSString& name) {
    const Skin* skin = name ? skinNamed(*name) : nullptr;
    return skin && !skin->captionColor;
}

PropertyValue settingsOf(const Look& look) {
    PropertyValue::Dictionary entries{{"selectedSkin", PropertyValue(look.skin)}};
    for (std::size_t i = 0; i < parts.size(); ++i)
        entries.emplace_back(parts[i].key, PropertyValue(look.colors[i]));
    return PropertyValue(std::move(entries));
}

PropertyValue singleRow(const std::string& caption) {
    return PropertyValue(PropertyValue::Array{PropertyValue(PropertyValue::Dictionary{
        {"categoryName", PropertyValue("Ringtone")},
        {"prettyCategoryName", PropertyValue(caption)},
        {"visible", PropertyValue(true)},
    })});
}

}  // namespace settings
