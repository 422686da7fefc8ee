#pragma once

#include "platform/uikit/UIControl.hpp"

#include <functional>

/// A thin bar at the right edge of something that scrolls: its length and its place tell what part
/// of the whole is seen, and dragging it moves that part. It can be grasped somewhat beside the
/// line that it is, which is broader while it is held.
class ScrollBar : public UIControl {
 public:
    ScrollBar();
    std::string_view className() const override { return "ScrollBar"; }

    /// What there is to tell, in points.
    struct Extent {
        CGRect opening;     ///< In the superview's coordinates; the bar moves along its right edge.
        CGFloat whole = 0;  ///< The height of what is seen through it.
        CGFloat offset = 0;  ///< From the beginning of that to the part that is seen.
    };
    /// Hides the bar where all is seen.
    void show(const Extent& extent);
    /// Called with the offset that the user has dragged the bar to, within what there is.
    void setDragHandler(std::function<void(CGFloat offset)> handler) {
        dragHandler_ = std::move(handler);
    }

    bool pointInside(const CGPoint& point) const override;
    void drawRect(Canvas& canvas) override;
    CGRect paintBounds() const override;

 protected:
    bool beginTracking(const CGPoint& point) override;
    void continueTracking(const CGPoint& point) override;
    void endTracking(const CGPoint& point) override { continueTracking(point); }

 private:
    CGFloat track() const;
    /// How far the bar can go.
    CGFloat travel() const { return track() - frame().size.height; }
    CGFloat greatestOffset() const { return extent_.whole - extent_.opening.size.height; }

    Extent extent_;
    CGFloat grip_ = 0;  ///< From the bar's top to the finger, points.
    std::function<void(CGFloat)> dragHandler_;
};
