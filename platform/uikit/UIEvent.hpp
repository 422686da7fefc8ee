#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/Geometry.hpp"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

class UIView;
class UIWindow;

/// The phases that a touch passes through, by the platform's numbers.
enum class UITouchPhase { Began = 0, Moved = 1, Stationary = 2, Ended = 3, Cancelled = 4 };

/// The kind of touch: a finger on the screen, or a pointer.
enum class UITouchType { Direct, IndirectPointer };

/// One finger, or the pressed pointer, from its beginning to its end. The view that it began on
/// receives all of it, even outside its bounds. Main thread.
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

/// The event of a touch message.
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

/// The keys that views handle. Steps are in reading direction.
enum class UIKey {
    Tab,
    BackTab,
    Left,
    Right,
    Up,
    Down,
    PageUp,
    PageDown,
    Home,
    End,
    Press  ///< Enter or the space bar.
};

/// A touch message before it is sent:
///
///     UITouchMessage{touch->view(), UITouchPhase::Began, touches, event}.send();
struct UITouchMessage {
    std::shared_ptr<UIView> receiver;  ///< nullptr: sending does nothing.
    UITouchPhase phase = UITouchPhase::Began;
    UITouchSet touches;
    std::shared_ptr<UIEvent> event;  ///< May be nil.

    /// "touchesBegan:withEvent:" and so on. Empty for the stationary phase, which has no message.
    std::string_view selector() const;
    /// Tells the observer, then calls the receiver, which lives at least until that returns.
    void send() const;
};

/// Sets the observer of touch messages, which is called before the view; nullptr removes it. Main
/// thread.
void setTouchMessageObserver(std::function<void(const UITouchMessage&)> observer);

/// What an event record says, in the order in which it lies there. Points; the rest is the
/// platform's own matter.
struct UIEventRecord {
    std::uint32_t flags = 0;
    std::uint32_t type = 0;
    std::uint32_t ignored1 = 0;
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::array<std::uint32_t, 10> ignored2{};
    std::array<std::uint32_t, 7> ignored3{};
    float sizeX = 0;
    float sizeY = 0;
    float x3 = 0;
    float y3 = 0;
    std::array<std::uint32_t, 3> ignored4{};
};
static_assert(sizeof(UIEventRecord) == 124);

/// The event that touches come with. Found by its name, "UITouchesEvent".
class UITouchesEvent : public UIEvent {
 public:
    std::string_view className() const override { return "UITouchesEvent"; }

    /// Private to the platform. Reads the record by position, as a UIEventRecord that begins right
    /// behind the object's class pointer: nothing else may come first in the record's class.
    void _initWithEvent(const NSObject& record, const UITouchSet& touches);

    const UIEventRecord& record() const { return record_; }

 private:
    UIEventRecord record_;
};
