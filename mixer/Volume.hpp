#pragma once

/// A slider shows the service's fraction (0 to 1) as a percentage (0 to 100), in single precision
/// both ways.
constexpr float percentFromFraction(float fraction) {
    return fraction * 100.0F;
}
constexpr float fractionFromPercent(float percent) {
    return percent / 100.0F;
}
