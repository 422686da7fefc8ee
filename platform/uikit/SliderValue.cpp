#include "platform/uikit/SliderValue.hpp"

#include <algorithm>
#include <cmath>

float SliderValue::clamped(float value) const {
    if (std::isnan(value)) return minimum_;
    return std::max(minimum_, std::min(value, maximum_));
}

bool SliderValue::setMinimum(float minimum) {
    if (std::isfinite(minimum)) minimum_ = minimum;
    return setValue(value_);
}

bool SliderValue::setMaximum(float maximum) {
    if (std::isfinite(maximum)) maximum_ = maximum;
    return setValue(value_);
}

bool SliderValue::setValue(float value) {
    const float kept = clamped(value);
    if (kept == value_) return false;
    value_ = kept;
    return true;
}

double SliderValue::fraction(double value) const {
    const double range = static_cast<double>(maximum_) - minimum_;
    if (!(range > 0) || std::isnan(value)) return 0;
    return std::clamp((value - minimum_) / range, 0.0, 1.0);
}

float SliderValue::valueAtFraction(double fraction) const {
    const double within = fraction > 0 ? std::min(fraction, 1.0) : 0.0;
    const double range = static_cast<double>(maximum_) - minimum_;
    return clamped(static_cast<float>(minimum_ + within * range));
}
