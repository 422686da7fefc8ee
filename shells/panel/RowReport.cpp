#include "shells/panel/RowReport.hpp"

#include "mixer/Caption.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"

#include <glib.h>

#include <algorithm>
#include <cmath>

namespace shell {
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

/// Whether the caption already tells the value, or that it is unknown.
bool tellsTheValue(const std::string& caption, const std::string& percent) {
    return caption.ends_with(": " + percent) || caption.ends_with(": unknown");
}

std::string line(const UISlider& slider) {
    const double fraction = fractionOf(slider);
    const auto filled = static_cast<std::size_t>(std::lround(fraction * double{barColumns}));
    const std::string caption = printableLine(slider.accessibilityLabel().value_or(""));
    // In the slider's single precision, so that a tie rounds as it does in the caption.
    const std::string percent = percentText(static_cast<float>(fraction * 100));
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
            labels += "  " + printableLine(element->accessibilityLabel().value_or("")) + "\n";
    }
    return rows.empty() ? labels : rows;
}

}  // namespace shell
