#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/Geometry.hpp"

#include <cstdint>
#include <memory>
#include <vector>

class UIView;
class UIWindow;

/// The phases that a touch passes through, by the platform's numbers.
enum class UITouchPhase { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

/// What touches: a finger on the screen, or a pointer that is moved from elsewhere.
enum class UITouchType { Direct, IndirectPointer };

/// One finger, or the pressed pointer, from its beginning to its end. Belongs to the main thread.
/// The view it began on keeps it: moves outside of that view still go there.
class UITouch : public NSObject {
 public:
    std::string_view className() const override { return "UITouch"; }

    UITouchPhase phase() const { return _phase; }
    void setPhase(UITouchPhase phase) { _phase = phase; }
    UITouchType type() const { return _type; }
    std::int32_t tapCount() const { return _tapCount; }
    /// Seconds; on the clock of the main loop for a touch that a window delivers.
    double timestamp() const { return _timestamp; }
    /// The view it began on; nullptr once that view is gone.
    std::shared_ptr<UIView> view() const { return _view.lock(); }
    std::shared_ptr<UIWindow> window() const { return _window.lock(); }
    /// In the view's coordinates; in the window's with nullptr.
    CGPoint locationInView(const UIView* view) const;
    CGPoint previousLocationInView(const UIView* view) const;

 protected:
    friend class UIWindow;

    std::int32_t _tapCount = 1;
    CGPoint _locationInWindow;
    CGPoint _previousLocationInWindow;
    std::weak_ptr<UIView> _view;
    std::weak_ptr<UIWindow> _window;
    UITouchPhase _phase = UITouchPhase::Began;
    std::uint8_t _touchFlags = 0;  // Their meaning is the platform's own matter.
    double _timestamp = 0;
    UITouchType _type = UITouchType::Direct;
};

using UITouchSet = std::vector<std::shared_ptr<UITouch>>;

/// What came with a touch message.
class UIEvent : public NSObject {
 public:
    std::string_view className() const override { return "UIEvent"; }
    explicit UIEvent(UITouchSet touches = {}) : touches_(std::move(touches)) {}
    const UITouchSet& allTouches() const { return touches_; }

 protected:
    void setTouches(const UITouchSet& touches) { touches_ = touches; }

 private:
    UITouchSet touches_;
};

/// Keys that the views know. Steps are in the direction of reading.
enum class UIKey { Tab, BackTab, Left, Right, Up, Down, PageUp, PageDown, Home, End };
