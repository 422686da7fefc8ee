#include "shells/desktop/tray/TrayLook.hpp"

#include "mixer/Caption.hpp"

#include <cmath>

namespace {

constexpr float oneThird = 1.0F / 3;
constexpr float twoThirds = 2.0F / 3;

const char* iconFor(float fraction) {
    if (!(fraction > 0)) return "audio-volume-muted-symbolic";
    if (fraction <= oneThird) return "audio-volume-low-symbolic";
    if (fraction <= twoThirds) return "audio-volume-medium-symbolic";
    return "audio-volume-high-symbolic";
}

}  // namespace

TrayLook trayLook(const std::string& title, std::optional<float> fraction) {
    if (!fraction) return {iconFor(0), unknownCaptionText(title)};
    const float percent = std::fmax(0.0F, std::fmin(1.0F, *fraction)) * 100;
    return {iconFor(*fraction), captionText(title, percent, Percentage::Shown)};
}
