#include "shells/panel/CloseButton.hpp"

namespace {

// Points. The plate lies in the margin that rows keep at the right.
constexpr CGFloat pressWidth = 44;
constexpr CGFloat plateSide = 16;
constexpr CGFloat plateMargin = 4;
constexpr CGFloat crossSize = 15;
constexpr UIColor crossColor = {1, 1, 1, 0.5};
constexpr UIColor pressedCrossColor = {1, 1, 1, 0.95};
constexpr UIColor pressedPlateColor = {1, 1, 1, 0.2};

}  // namespace

CloseButton::CloseButton() {
    setAccessibilityLabel("Close");
}

void CloseButton::placeOn(const CGRect& panel) {
    setFrame(CGRectMake(CGRectGetMaxX(panel) - pressWidth, panel.origin.y, pressWidth, height));
}

void CloseButton::drawRect(Canvas& canvas) {
    const CGRect plate = CGRectMake(bounds().size.width - plateMargin - plateSide, plateMargin,
                                    plateSide, plateSide);
    if (isHighlighted()) canvas.fillRounded(plate, plateSide / 2, pressedPlateColor);
    canvas.drawText("\u00d7", UIFont::systemFontOfSize(crossSize),
                    isHighlighted() ? pressedCrossColor : crossColor, plate,
                    NSTextAlignment::Center);
}
