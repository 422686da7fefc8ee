#pragma once

#include "shells/panel/CentredLabel.hpp"
#include "shells/panel/ScrollingView.hpp"

#include <memory>

/// The page that the widget has on the lock screen: the widget in its middle, scrolled where it is
/// taller than the page. Fingers on a control are the control's; a drag that begins where no view
/// has a use for it scrolls when it goes up or down, and is left to the lock screen, which turns
/// its pages by it, when it goes sideways.
class PageView : public UIView {
 public:
    PageView();
    std::string_view className() const override { return "PageView"; }

    void setContent(const std::shared_ptr<UIView>& content);
    ScrollingView& scroller() { return *scroller_; }
    /// A quiet text below the widget, of one line or more; nil for none.
    void setNotice(const NSString& text);

    /// Whether a finger that comes down there is none of the lock screen's business.
    bool takesTouchAt(const CGPoint& point);
    /// Whether a drag under way moves the content.
    bool isScrolling() const { return drag_ == Drag::Scrolls; }

    void layoutSubviews() override;
    bool scrolled(const CGPoint& point, double steps) override;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;

 private:
    enum class Drag { Undecided, Scrolls, TurnsThePage };

    std::shared_ptr<UIView> content_;
    std::shared_ptr<ScrollingView> scroller_ = std::make_shared<ScrollingView>();
    std::shared_ptr<CentredLabel> notice_ = std::make_shared<CentredLabel>();
    std::weak_ptr<UITouch> finger_;
    CGPoint origin_;  ///< Where the finger came down.
    Drag drag_ = Drag::Undecided;
};
