#pragma once

#include "platform/uikit/UIView.hpp"
#include "shells/panel/CentredLabel.hpp"
#include "shells/panel/CloseButton.hpp"
#include "shells/panel/ScrollingView.hpp"

#include <functional>

/// The dark rounded panel with its shadow, filling the window, and the widget on it. A drag on its
/// empty parts, where no view of the widget has a use for it, moves the window, or scrolls a widget
/// that is taller than the panel.
class PanelView : public UIView {
 public:
    PanelView();
    std::string_view className() const override { return "PanelView"; }

    /// The view that is shown on the panel.
    void setWidgetView(const std::shared_ptr<UIView>& view) { scroller_->setContent(view); }
    ScrollingView& scroller() { return *scroller_; }
    /// A quiet text below the widget, of one line or more, from the next layout on; nil for none.
    void setNotice(const NSString& text);
    /// What the text takes from the panel, in points.
    CGFloat noticeHeight() const;
    /// Own coordinates.
    void setLayout(const PanelLayout& layout, PanelEdge edge);
    const CGRect& panel() const { return panel_; }
    /// Called once a drag has gone far enough to be meant as one.
    void setMoveHandler(std::function<void()> handler) { moveHandler_ = std::move(handler); }

    /// Called by a button in the corner, which is there from the next layout on; an empty one takes
    /// the button away. A widget taller than the panel then scrolls below the button.
    void setCloseHandler(std::function<void()> handler);

    void drawRect(Canvas& canvas) override;
    bool pointInside(const CGPoint& point) const override;
    bool scrolled(const CGPoint& point, double steps) override;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;

 private:
    CGFloat noticeTextHeight() const;

    std::shared_ptr<ScrollingView> scroller_;
    std::shared_ptr<CentredLabel> notice_;
    std::shared_ptr<CloseButton> closeButton_;  ///< nullptr where there is none.
    CGRect panel_;
    PanelEdge edge_ = PanelEdge::Hard;
    std::weak_ptr<UITouch> dragging_;
    CGPoint dragOrigin_;
    bool scrolling_ = false;
    std::function<void()> moveHandler_;
    std::function<void()> closeHandler_;
};
