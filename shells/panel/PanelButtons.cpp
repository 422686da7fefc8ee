#include "shells/panel/PanelButtons.hpp"

#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace shell {
namespace {

// Points. The plate lies in the margin that rows keep at both sides.
constexpr CGFloat plateSide = 16;
constexpr CGFloat plateMargin = 4;
constexpr CGFloat gearMargin = 3;  // The first caption is near.
constexpr CGFloat crossSize = 15;
constexpr UIColor signColor = {1, 1, 1, 0.5};
constexpr UIColor pressedSignColor = {1, 1, 1, 0.95};
constexpr UIColor pressedPlateColor = {1, 1, 1, 0.2};

// Points.
constexpr CGFloat buttonTextSize = 13;
constexpr CGFloat plateRadius = 9;
constexpr CGFloat touchReach = 4;  // Above and below the plate.
// The focus as sliders show it: a light line, and a coloured one around.
constexpr CGFloat focusLine = 1;
constexpr CGFloat focusRing = 2;
constexpr UIColor focusRingColor = {0, 122.0 / 255, 1, 1};

struct PlateColors {
    UIColor plate;
    UIColor pressed;
    UIColor title;
};
// Without a hue, to go with every skin.
constexpr PlateColors suggestedColors = {
    {1, 1, 1, 0.88}, {1, 1, 1, 0.6}, {28.0 / 255, 28.0 / 255, 30.0 / 255, 1}};
constexpr PlateColors plainColors = {{1, 1, 1, 0.13}, {1, 1, 1, 0.28}, {1, 1, 1, 0.92}};

// The gear, in parts of its radius.
constexpr int teeth = 8;
constexpr CGFloat gearRadius = 5.75;  // points
constexpr CGFloat toothRoot = 0.74;
constexpr CGFloat hole = 0.36;

Polygon ring(const CGPoint& centre, int corners, const auto& radiusOf, const auto& turnOf) {
    Polygon points;
    for (int i = 0; i < corners; ++i) {
        const double angle = turnOf(i) * 2 * std::numbers::pi;
        const double radius = radiusOf(i);
        points.push_back({static_cast<CGFloat>(centre.x + radius * std::cos(angle)),
                          static_cast<CGFloat>(centre.y + radius * std::sin(angle))});
    }
    return points;
}

/// Each tooth has two corners at its root and two, closer together, at its tip.
std::vector<Polygon> gearAround(const CGPoint& centre) {
    constexpr std::array<double, 4> placeInTooth = {-0.27, -0.16, 0.16, 0.27};
    const Polygon outside = ring(
        centre, 4 * teeth,
        [](int i) { return gearRadius * (i % 4 == 1 || i % 4 == 2 ? 1 : toothRoot); },
        [&](int i) {
            const int tooth = i / 4;
            return (tooth + placeInTooth[static_cast<std::size_t>(i % 4)]) / teeth;
        });
    constexpr int holeCorners = 24;
    const Polygon inside = ring(
        centre, holeCorners, [](int) { return gearRadius * hole; },
        [](int i) { return static_cast<double>(i) / holeCorners; });
    return {outside, inside};
}

const char* settingsLabel() {
    return translated("Settings…");
}

}  // namespace

CornerButton::CornerButton(Sign sign) : sign_(sign) {
    // TRANSLATORS: The button with the cross in the window's corner, for screen readers.
    setAccessibilityLabel(sign == Sign::Cross ? translated("Close") : settingsLabel());
}

void CornerButton::placeOn(const CGRect& panel) {
    if (sign_ == Sign::Cross)
        setFrame(CGRectMake(CGRectGetMaxX(panel) - side, panel.origin.y, side, crossHeight));
    else
        setFrame({panel.origin, {side, side}});
}

bool CornerButton::pointInside(const CGPoint& point) const {
    if (!UIButton::pointInside(point)) return false;
    const std::shared_ptr<UIView> rows = rows_.lock();
    if (!rows) return true;
    const std::shared_ptr<UIView> below =
        rows->hitTest(convertPointToView(point, rows.get()), nullptr);
    const auto slider = std::dynamic_pointer_cast<UISlider>(below);
    return !slider || !slider->reaches(convertPointToView(point, slider.get()));
}

CGRect CornerButton::plate() const {
    const CGSize size = {plateSide, plateSide};
    if (sign_ == Sign::Gear) return {{gearMargin, gearMargin}, size};
    return {{bounds().size.width - plateMargin - plateSide, plateMargin}, size};
}

void CornerButton::drawRect(Canvas& canvas) {
    const CGRect place = plate();
    const UIColor color = isHighlighted() ? pressedSignColor : signColor;
    if (isHighlighted()) canvas.fillRounded(place, plateSide / 2, pressedPlateColor);
    if (sign_ == Sign::Cross)
        canvas.drawText("×", UIFont::systemFontOfSize(crossSize), color, place,
                        NSTextAlignment::Center);
    else
        canvas.fillPolygons(gearAround({CGRectGetMidX(place), CGRectGetMidY(place)}), color);
    if (isFocused() && window()->isFocusVisible())
        canvas.strokeRounded(CGRectInset(place, -focusRing, -focusRing), plateSide, focusRing,
                             focusRingColor);
}

PlateButton::PlateButton(const std::string& title, Weight weight) : weight_(weight) {
    setAccessibilityLabel(title);
}

bool PlateButton::pointInside(const CGPoint& point) const {
    return CGRectContainsPoint(CGRectInset(bounds(), 0, -touchReach), point);
}

void PlateButton::placeIn(const CGRect& room) {
    const CGFloat width = std::min(widest, room.size.width);
    setFrame(CGRectMake(std::floor(CGRectGetMidX(room) - width / 2), room.origin.y, width, height));
}

void PlateButton::drawRect(Canvas& canvas) {
    const PlateColors& colors = weight_ == Weight::Suggested ? suggestedColors : plainColors;
    canvas.fillRounded(bounds(), plateRadius, isHighlighted() ? colors.pressed : colors.plate);
    canvas.drawText(accessibilityLabel().value_or(""), UIFont::systemFontOfSize(buttonTextSize),
                    colors.title, bounds(), NSTextAlignment::Center);
    if (!isFocused() || !window()->isFocusVisible()) return;
    const CGRect line = CGRectInset(bounds(), -focusLine, -focusLine);
    canvas.strokeRounded(line, plateRadius + focusLine, focusLine, UIColor::whiteColor());
    canvas.strokeRounded(paintBounds(), plateRadius + focusLine + focusRing, focusRing,
                         focusRingColor);
}

CGRect PlateButton::paintBounds() const {
    constexpr CGFloat around = focusLine + focusRing;
    return CGRectInset(bounds(), -around, -around);
}

std::shared_ptr<PlateButton> makeSettingsButton() {
    return std::make_shared<PlateButton>(settingsLabel(), PlateButton::Weight::Plain);
}

}  // namespace shell
