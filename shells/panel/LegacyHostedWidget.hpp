#pragma once

#include "platform/uikit/BBWeeAppController.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/panel/HostedWidget.hpp"

#include <functional>
#include <memory>

namespace shell {

/// Withholds touches from its subviews and reports taps by their place alone, as the legacy host
/// does. Its superview receives the touches too.
class TapView : public UIView {
 public:
    using UIView::UIView;
    std::string_view className() const override { return "TapView"; }

    /// Called with the place where a finger was lifted, in this view's coordinates, unless it moved
    /// too far for a tap. During the call, hit testing finds the subviews.
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

/// A widget under the legacy host: the controller's view in a container that only reports the
/// places of taps. It is loaded when presented and unloaded when dismissed. Main thread.
class LegacyHostedWidget final : public ControllerWidget {
 public:
    explicit LegacyHostedWidget(std::shared_ptr<BBWeeAppController> controller);
    /// Dismisses it if it is presented.
    ~LegacyHostedWidget() override;

    std::shared_ptr<UIView> view() override;
    CGSize preferredSize() override;
    void present() override;
    void dismiss() override;

 protected:
    NSObject& controller() override { return *controller_; }

 private:
    bool responds(const char* selector) const { return controller_->respondsToSelector(selector); }
    void measure();

    std::shared_ptr<BBWeeAppController> controller_;
    std::shared_ptr<TapView> container_ = std::make_shared<TapView>();
};

}  // namespace shell
