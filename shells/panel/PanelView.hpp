#pragma once

#include "platform/uikit/UIView.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/panel/OutputsOffer.hpp"
#include "shells/panel/PanelButtons.hpp"
#include "shells/panel/ScrollingView.hpp"

#include <functional>

namespace shell {

inline constexpr UIColor panelColor = {28.0 / 255, 28.0 / 255, 30.0 / 255, 1};

/// The dark rounded panel with its shadow, which fills the window, and the widget on it. A drag on
/// its empty parts moves the window, or scrolls a widget taller than the panel.
///
///     panel->setWidgetView(content.view);
///     panel->setMoveHandler([&] { beginMove(); });
class PanelView : public UIView {
 public:
    PanelView();
    std::string_view className() const override { return "PanelView"; }

    /// The view on the panel.
    void setWidgetView(const std::shared_ptr<UIView>& view) { scroller_->setContent(view); }
    ScrollingView& scroller() { return *scroller_; }
    /// A notice of one or more lines below the widget, from the next layout on; nil for none.
    void setNotice(const NSString& text);
    /// Offers outputs for roles below the widget while they are offered, from the next layout on;
    /// to be called again after each of their changes. They must live until the next call; nullptr
    /// for none.
    void setOutputs(RoleOutputs* outputs);
    /// The height in points of what is below the widget, on a panel of that width.
    CGFloat footerHeight(CGFloat width) const;
    /// Own coordinates.
    void setLayout(const PanelLayout& layout, PanelEdge edge);
    const CGRect& panel() const { return panel_; }
    /// Called once a finger has moved far enough for a drag.
    void setMoveHandler(std::function<void()> handler) { moveHandler_ = std::move(handler); }

    /// Called by a close button in the corner, which exists from the next layout on; an empty
    /// handler removes it. A widget taller than the panel scrolls below the button.
    void setCloseHandler(std::function<void()> handler);
    /// Called by a gear in the other corner, and by a button below a notice, both of which exist
    /// from the next layout on; an empty handler removes them.
    void setSettingsHandler(std::function<void()> handler);
    const std::function<void()>& settingsHandler() const { return settingsHandler_; }
    /// Whether the button below the notice is there with the next layout.
    bool hasNoticeButton() const { return noticeButton_ && notice_->text(); }

    void drawRect(Canvas& canvas) override;
    bool pointInside(const CGPoint& point) const override;
    bool scrolled(const CGPoint& point, double steps) override;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;

 private:
    void callOnPress(UIButton& button, std::function<void()> PanelView::*handler);
    CGFloat noticeTextHeight() const;
    CGFloat noticeHeight() const;
    void placeFooter(CGRect& viewport);

    std::shared_ptr<ScrollingView> scroller_;
    std::shared_ptr<CentredLabel> notice_;
    std::shared_ptr<OutputsOffer> offer_;
    // nullptr where there is none.
    std::shared_ptr<CornerButton> closeButton_;
    std::shared_ptr<CornerButton> gear_;
    std::shared_ptr<PlateButton> noticeButton_;
    CGRect panel_;
    PanelEdge edge_ = PanelEdge::Hard;
    std::weak_ptr<UITouch> dragging_;
    CGPoint dragOrigin_;
    bool scrolling_ = false;
    std::function<void()> moveHandler_;
    std::function<void()> closeHandler_;
    std::function<void()> settingsHandler_;
};

}  // namespace shell
