#include "shells/panel/RowReport.hpp"

#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UIAccessibility.hpp"

#include <glib.h>

#include <cmath>
#include <cstdio>

namespace {

constexpr long captionColumns = 34;
constexpr std::size_t barColumns = 20;

std::string padded(std::string text) {
    const long columns = g_utf8_strlen(text.data(), static_cast<gssize>(text.size()));
    text.append(static_cast<std::size_t>(std::max(1L, captionColumns - columns)), ' ');
    return text;
}

double fractionOf(const UISlider& slider) {
    const double range = double{slider.maximumValue()} - double{slider.minimumValue()};
    return range > 0 ? (double{slider.value()} - double{slider.minimumValue()}) / range : 0;
}

std::string percentText(double fraction) {
    char text[16];
    std::snprintf(text, sizeof text, "%.0f%%", fraction * 100);
    return text;
}

/// A caption that ends with the value, or tells that it is not known, needs no other.
bool tellsTheValue(const std::string& caption, const std::string& percent) {
    return caption.ends_with(": " + percent) || caption.ends_with(": unknown");
}

std::string line(const UISlider& slider) {
    const double fraction = fractionOf(slider);
    const auto filled = static_cast<std::size_t>(std::lround(fraction * double{barColumns}));
    const std::string caption = printableLine(accessibilityLabel(slider).value_or(""));
    const std::string percent = percentText(fraction);
    const std::string value = tellsTheValue(caption, percent) ? "" : " " + percent;
    return "  " + padded(caption) + "[" + std::string(filled, '#') +
           std::string(barColumns - filled, '-') + "]" + value + "\n";
}

}  // namespace

std::string rowReport(const std::shared_ptr<UIView>& view) {
    std::string rows;
    std::string labels;
    for (const std::shared_ptr<UIView>& element : accessibilityElements(view)) {
        if (const auto slider = std::dynamic_pointer_cast<UISlider>(element))
            rows += line(*slider);
        else
            labels += "  " + printableLine(accessibilityLabel(*element).value_or("")) + "\n";
    }
    return rows.empty() ? labels : rows;
}
