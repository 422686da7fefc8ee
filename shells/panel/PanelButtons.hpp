#pragma once

#include "platform/uikit/UIButton.hpp"

#include <memory>
#include <string>

namespace shell {

/// A small sign in an upper corner of a panel, in the margin beside the rows, which reacts to
/// presses around it: rows keep their places, and sliders win where both could be meant.
///
///     auto close = std::make_shared<CornerButton>(CornerButton::Sign::Cross);
///     close->placeOn(panel);
///
/// The gear, on the left, leads to the settings; the Tab key stops there. The cross, on the right,
/// is for windows that nothing else may be able to close: with a finger, and without keyboard and
/// window manager. Main thread.
class CornerButton : public UIButton {
 public:
    enum class Sign { Cross, Gear };

    explicit CornerButton(Sign sign);
    std::string_view className() const override {
        return sign_ == Sign::Cross ? "CloseButton" : "SettingsButton";
    }

    static constexpr CGFloat crossHeight = 30;  ///< Points, from the panel's edge on.
    static constexpr CGFloat side = 44;  ///< Points; of the gear's square, and the cross's width.

    /// Places it in its corner of the panel, which is given in the superview's coordinates.
    void placeOn(const CGRect& panel);
    /// What presses may be meant for as well.
    void setRows(const std::shared_ptr<UIView>& rows) { rows_ = rows; }

    bool canBecomeFocused() const override { return sign_ == Sign::Gear && isEnabled(); }
    bool pointInside(const CGPoint& point) const override;
    void drawRect(Canvas& canvas) override;

 private:
    CGRect plate() const;

    Sign sign_;
    std::weak_ptr<UIView> rows_;
};

/// A button of the dark panel: a title on a rounded plate. The Tab key stops here.
class PlateButton : public UIButton {
 public:
    enum class Weight { Suggested, Plain };

    PlateButton(const std::string& title, Weight weight);
    std::string_view className() const override { return "PlateButton"; }

    static constexpr CGFloat height = 36;   ///< Points.
    static constexpr CGFloat widest = 180;  ///< Points.
    /// Places it in the middle of `room`, as wide as it may be, from its upper edge on.
    void placeIn(const CGRect& room);

    bool canBecomeFocused() const override { return isEnabled(); }
    /// A fingertip's height.
    bool pointInside(const CGPoint& point) const override;
    void drawRect(Canvas& canvas) override;
    CGRect paintBounds() const override;

 private:
    Weight weight_;
};

/// "Settings…", without a frame and an action.
std::shared_ptr<PlateButton> makeSettingsButton();

}  // namespace shell
