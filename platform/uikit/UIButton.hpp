#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UIControl.hpp"

/// A control that acts when a touch ends inside of it, by touch-up-inside, and that can be pressed
/// by other means too. It has no look of its own. A subclass that can have the focus is pressed by
/// Enter and the space bar.
///
///     auto close = std::make_shared<Cross>(frame);
///     close->setAccessibilityLabel("Close");
///     close->addAction(self, UIControlEventTouchUpInside, [](const auto&) { ... });
class UIButton : public UIControl {
 public:
    using UIControl::UIControl;
    std::string_view className() const override { return "UIButton"; }

    UIAccessibilityRole accessibilityRole() const override { return UIAccessibilityRole::Button; }
    /// The accessible name; nil unless it was set.
    NSString accessibilityLabel() const override { return accessibilityLabel_; }
    bool isAccessibilityEnabled() const override { return isEnabled(); }
    void setAccessibilityLabel(const NSString& label);
    /// Presses the button by other means than a touch. Ignored while it is disabled.
    void press();
    bool keyPressed(UIKey key) override;

 private:
    NSString accessibilityLabel_;
};
