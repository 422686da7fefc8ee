#pragma once

#include "platform/uikit/UIView.hpp"

#include <functional>

/// Keeps touches from its subviews and tells of taps by their place alone, as the legacy host does.
/// Its superview hears of the touches too.
class TapView : public UIView {
 public:
    using UIView::UIView;
    std::string_view className() const override { return "TapView"; }

    /// Called with the place where a finger was lifted, in this view's coordinates, unless it had
    /// moved too far for a tap. While the handler runs the subviews can be hit.
    void setTapHandler(std::function<void(const CGPoint&)> handler) {
        tapHandler_ = std::move(handler);
    }

    std::shared_ptr<UIView> hitTest(const CGPoint& point, const UIEvent* event) override;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;

 private:
    void forgetIfFar(const UITouchSet& touches);

    std::function<void(const CGPoint&)> tapHandler_;
    std::weak_ptr<UITouch> touch_;
    CGPoint began_;
    bool telling_ = false;
};
