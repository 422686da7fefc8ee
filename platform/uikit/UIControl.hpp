#pragma once

#include "platform/uikit/UIView.hpp"

#include <functional>
#include <memory>
#include <vector>

/// The platform's event bits. Every touch that held the control ends with one of the first three.
enum UIControlEvents : unsigned {
    UIControlEventTouchUpInside = 1U << 6,
    UIControlEventTouchUpOutside = 1U << 7,
    UIControlEventTouchCancel = 1U << 8,
    UIControlEventValueChanged = 1U << 12,
};

enum UIControlState : unsigned { UIControlStateNormal = 0, UIControlStateHighlighted = 1 };

/// A view that the user operates, and that tells its targets of it.
///
///     control->addTarget(self, &Mixer::sliderMoved, UIControlEventValueChanged);
///
/// A subclass overrides the four functions of tracking and sends its events by
/// sendActionsForControlEvents(). Targets are not owned; a target that is gone is not called.
class UIControl : public UIView {
 public:
    using UIView::UIView;
    std::string_view className() const override { return "UIControl"; }

    /// Calls (target.*action)(sender) for the events of the mask. A null target is ignored.
    template <class T, class Sender>
    void addTarget(const std::shared_ptr<T>& target,
                   void (T::*action)(const std::shared_ptr<Sender>&), unsigned events) {
        T* object = target.get();
        addAction(target, events, [object, action](const std::shared_ptr<UIControl>& sender) {
            (object->*action)(std::dynamic_pointer_cast<Sender>(sender));
        });
    }
    void addAction(const std::shared_ptr<NSObject>& target, unsigned events,
                   std::function<void(const std::shared_ptr<UIControl>&)> action);
    void sendActionsForControlEvents(unsigned events);

    bool isEnabled() const { return enabled_; }
    /// A disabled control takes no touches, wheel, keys or focus; a touch under way is cancelled.
    void setEnabled(bool enabled);
    /// Whether a touch holds the control.
    bool isTracking() const { return !tracked_.expired(); }
    /// Whether the control looks pressed: while a touch holds it, or as it was set.
    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);
    UIControlState state() const {
        return highlighted_ ? UIControlStateHighlighted : UIControlStateNormal;
    }

    std::shared_ptr<UIView> hitTest(const CGPoint& point, const UIEvent* event) override;
    /// One touch at a time: further fingers on the control are ignored.
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;

 protected:
    /// A touch, in own coordinates. The control is highlighted from before the beginning until
    /// after the end. False from beginTracking() lets the touch go.
    virtual bool beginTracking(const CGPoint& point);
    virtual void continueTracking(const CGPoint& point);
    virtual void endTracking(const CGPoint& point);
    virtual void cancelTracking();
    void didMoveToWindow() override;

 private:
    void letGo();
    std::shared_ptr<UITouch> trackedAmong(const UITouchSet& touches) const;

    struct Target {
        std::weak_ptr<NSObject> object;
        unsigned events;
        std::function<void(const std::shared_ptr<UIControl>&)> action;
    };
    std::vector<Target> targets_;
    std::weak_ptr<UITouch> tracked_;
    bool tracking_ = false;  ///< Stays true when the touch goes away without an end.
    bool enabled_ = true;
    bool highlighted_ = false;
};
