#include "platform/uikit/UIButton.hpp"

void UIButton::setAccessibilityLabel(const NSString& label) {
    if (label == accessibilityLabel_) return;
    accessibilityLabel_ = label;
    structureChanged();
}

void UIButton::press() {
    if (isEnabled()) sendActionsForControlEvents(UIControlEventTouchUpInside);
}

bool UIButton::keyPressed(UIKey key) {
    if (key != UIKey::Press || !isEnabled()) return false;
    press();
    return true;
}
