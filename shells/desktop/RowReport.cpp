#include "shells/desktop/RowReport.hpp"

#include "platform/uikit/UIAccessibility.hpp"

#include <glib.h>

#include <cmath>
#include <cstdio>

namespace {

constexpr long captionColumns = 34;
constexpr std::size_t barColumns = 20;

/// One line of valid text: a caption comes from a file or a server.
std::string printable(const std::string& text) {
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string line = valid;
    g_free(valid);
    for (char& character : line)
        if (g_ascii_iscntrl(character)) character = ' ';
    return line;
}

std::string padded(std::string text) {
    const long columns = g_utf8_strlen(text.data(), static_cast<gssize>(text.size()));
    text.append(static_cast<std::size_t>(std::max(1L, captionColumns - columns)), ' ');
    return text;
}

double fractionOf(const UISlider& slider) {
    const double range = double{slider.maximumValue()} - double{slider.minimumValue()};
    return range > 0 ? (double{slider.value()} - double{slider.minimumValue()}) / range : 0;
}

std::string line(const UISlider& slider) {
    const double fraction = fractionOf(slider);
    const auto filled = static_cast<std::size_t>(std::lround(fraction * double{barColumns}));
    char percent[16];
    std::snprintf(percent, sizeof percent, "%4.0f %%\n", fraction * 100);
    return "  " + padded(printable(accessibilityLabel(slider).value_or(""))) + "[" +
           std::string(filled, '#') + std::string(barColumns - filled, '-') + "]" + percent;
}

}  // namespace

std::string rowReport(const std::shared_ptr<UIView>& widget) {
    std::string report;
    for (const std::shared_ptr<UIView>& element : accessibilityElements(widget))
        if (const auto slider = std::dynamic_pointer_cast<UISlider>(element))
            report += line(*slider);
    return report;
}
