#include "platform/uikit/UIButton.hpp"

void UIButton::setAccessibilityLabel(const NSString& label) {
    if (label == accessibilityLabel_) return;
    accessibilityLabel_ = label;
    structureChanged();
}

void UIButton::press() {
    if (isEnabled()) sendActionsForControlEvents(UIControlEventTouchUpInside);
}
