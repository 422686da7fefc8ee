#pragma once

#include "platform/uikit/UIControl.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/panel/PanelLayout.hpp"

#include <functional>

namespace shell {

/// A thin scroll bar at the right edge of a viewport. It can be grasped somewhat beside its line,
/// and is wider while it is held.
class ScrollBar : public UIControl {
 public:
    ScrollBar();
    std::string_view className() const override { return "ScrollBar"; }

    /// What the bar shows, in points.
    struct Extent {
        CGRect opening;     ///< In the superview's coordinates; the bar moves along its right edge.
        CGFloat whole = 0;  ///< The height of the content.
        CGFloat offset = 0;  ///< From the content's top to the visible part.
    };
    /// Hides the bar if everything is visible.
    void show(const Extent& extent);
    /// Called with the offset that the user has dragged the bar to, within the limits.
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
    /// The bar's range of movement, in points.
    CGFloat travel() const { return track() - frame().size.height; }
    CGFloat greatestOffset() const { return extent_.whole - extent_.opening.size.height; }

    Extent extent_;
    CGFloat grip_ = 0;  ///< From the bar's top to the finger, points.
    std::function<void(CGFloat)> dragHandler_;
};

/// A viewport for one view, which scrolls vertically if it is taller, with a scroll bar. It takes
/// over a finger that swipes up or down, whatever view it began on; it does not take over the
/// mouse.
///
///     scroller->setContent(widgetView);
///     scroller->scrollToShow(rowRect);
class ScrollingView : public UIView {
 public:
    ScrollingView();
    ~ScrollingView() override;
    std::string_view className() const override { return "ScrollingView"; }

    /// Replaces the content; setting the same view again keeps its position. The content keeps its
    /// width, and is centred if it is narrower than the viewport.
    void setContent(const std::shared_ptr<UIView>& content);
    CGFloat contentHeight() const { return content_ ? content_->frame().size.height : 0; }
    bool isScrollable() const { return greatestOffset() > 0; }
    /// The scroll offset, in points.
    CGFloat offset() const { return offset_; }
    /// Scrolls by points, positive downwards in the content; stops at the ends.
    void scrollBy(CGFloat points);
    /// Scrolls as little as needed to make a rectangle (in this view's coordinates) visible.
    void scrollToShow(const CGRect& rect);

    bool delaysTouchesIn(const UIView& subview) const override {
        return isScrollable() && &subview == content_.get();
    }
    bool scrolled(const CGPoint& point, double steps) override;
    void layoutSubviews() override;

 private:
    CGFloat greatestOffset() const;
    void place();

    std::shared_ptr<UIView> content_;
    std::shared_ptr<ScrollBar> bar_;
    CGFloat offset_ = 0;
};

}  // namespace shell
