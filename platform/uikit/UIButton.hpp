#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UIControl.hpp"

/// A control that does something when a touch ends inside of it, by touch-up-inside, and that can
/// be pressed by other means too.
class UIButton : public UIControl {
 public:
    using UIControl::UIControl;
    std::string_view className() const override { return "UIButton"; }

    /// What somebody who cannot see it is told that it does.
    const NSString& accessibilityLabel() const { return accessibilityLabel_; }
    void setAccessibilityLabel(const NSString& label);
    /// By other means than a touch. Ignored while it is disabled.
    void press();

 private:
    NSString accessibilityLabel_;
};
