#pragma once

#include "platform/uikit/UIView.hpp"
#include "shells/panel/PanelLayout.hpp"
#include "shells/panel/ScrollBar.hpp"

/// Shows one view through an opening, moved up and down when it is taller than that, with a thin
/// bar that tells where it stands and can be dragged. A finger on the view that swipes up or down
/// is this view's then, whatever it began on, and goes to its superviews; the mouse is not.
class ScrollingView : public UIView {
 public:
    ScrollingView();
    ~ScrollingView() override;
    std::string_view className() const override { return "ScrollingView"; }

    /// Takes the place of the one before; the same again stays where it stands. Its width is its
    /// own matter; a small one lies in the middle of the opening.
    void setContent(const std::shared_ptr<UIView>& content);
    CGFloat contentHeight() const { return content_ ? content_->frame().size.height : 0; }
    bool isScrollable() const { return greatestOffset() > 0; }
    /// How far the content is moved up, in points.
    CGFloat offset() const { return offset_; }
    /// Points; positive shows what lies further down. Stops at the ends.
    void scrollBy(CGFloat points);
    /// Moves as little as needed for a rectangle (of this view's coordinates) to be seen.
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
