#pragma once

#include "shells/panel/Notices.hpp"
#include "shells/panel/ScrollingView.hpp"

#include <memory>

namespace phosh {

/// The lock screen page's view: the widget in its middle, scrolled if it is taller than the page. A
/// finger on a control belongs to the control; any other drag scrolls if it is vertical, and is
/// left to the lock screen, which turns its pages, if it is horizontal.
class PageView : public UIView {
 public:
    PageView();
    std::string_view className() const override { return "PageView"; }

    void setContent(const std::shared_ptr<UIView>& content);
    shell::ScrollingView& scroller() { return *scroller_; }
    /// A notice of one or more lines below the widget; nil for none.
    void setNotice(const NSString& text);

    /// Whether a finger at that place belongs to the page and not to the lock screen.
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
    std::shared_ptr<shell::ScrollingView> scroller_ = std::make_shared<shell::ScrollingView>();
    std::shared_ptr<shell::CentredLabel> notice_ = std::make_shared<shell::CentredLabel>();
    std::weak_ptr<UITouch> finger_;
    CGPoint origin_;  ///< Where the finger came down.
    Drag drag_ = Drag::Undecided;
};

}  // namespace phosh
