#include "shells/desktop/tray/TrayLook.hpp"

#include <cmath>
#include <cstdio>

namespace {

constexpr float oneThird = 1.0F / 3;
constexpr float twoThirds = 2.0F / 3;

const char* iconFor(float fraction) {
    if (!(fraction > 0)) return "audio-volume-muted-symbolic";
    if (fraction <= oneThird) return "audio-volume-low-symbolic";
    if (fraction <= twoThirds) return "audio-volume-medium-symbolic";
    return "audio-volume-high-symbolic";
}

std::string percentOf(float fraction) {
    char text[16];
    std::snprintf(text, sizeof text, "%.0f%%", std::fmax(0.0, std::fmin(1.0, fraction)) * 100);
    return text;
}

}  // namespace

TrayLook trayLook(std::optional<float> fraction) {
    return {iconFor(fraction.value_or(0)),
            "Media: " + (fraction ? percentOf(*fraction) : "unknown")};
}
