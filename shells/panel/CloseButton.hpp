#pragma once

#include "platform/uikit/UIButton.hpp"

/// A quiet cross in the upper right corner of a panel, for a window that nothing else may close: a
/// finger, without a keyboard and a window manager. It is drawn beside what rows show, and can be
/// pressed somewhat around that.
class CloseButton : public UIButton {
 public:
    CloseButton();
    std::string_view className() const override { return "CloseButton"; }

    static constexpr CGFloat height = 30;  ///< Points, from the panel's edge on.
    /// In the corner of that panel, whose coordinates are the superview's.
    void placeOn(const CGRect& panel);

    void drawRect(Canvas& canvas) override;
};
