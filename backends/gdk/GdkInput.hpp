#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <map>
#include <memory>

/// Where and when a pointer button or a finger went down: what a window manager asks for when it
/// is to move the window.
struct GdkPress {
    GdkDevice* device = nullptr;  ///< Not owned; nullptr before the first press.
    int button = 1;
    int rootX = 0;  ///< Screen coordinates.
    int rootY = 0;
    guint32 time = 0;
};

/// Turns GDK's input events into the touches, wheel steps and keys of a view tree. Event
/// coordinates are the window's points, and the tree's root lies at the window's origin.
class GdkInput {
 public:
    explicit GdkInput(std::shared_ptr<UIWindow> content);

    /// What a GdkWindow must select.
    static constexpr int eventMask =
        GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_BUTTON1_MOTION_MASK | GDK_TOUCH_MASK |
        GDK_SCROLL_MASK | GDK_SMOOTH_SCROLL_MASK | GDK_KEY_PRESS_MASK | GDK_LEAVE_NOTIFY_MASK;

    /// Answers whether a view made use of the event.
    bool handle(const GdkEvent& event);
    const GdkPress& lastPress() const { return lastPress_; }

 private:
    bool press(const GdkEventButton& event);
    bool release(const GdkEventButton& event);
    bool motion(const GdkEventMotion& event);
    bool touch(const GdkEventTouch& event);
    bool scroll(const GdkEventScroll& event);
    bool key(const GdkEventKey& event);
    bool leave(const GdkEventCrossing& event);
    bool cancel();
    int beginSequence(const GdkEventSequence* sequence);

    static constexpr int pointerTouch = 0;  ///< Fingers are numbered from 1 up.

    std::shared_ptr<UIWindow> content_;
    std::map<const GdkEventSequence*, int> sequences_;
    bool pressed_ = false;
    GdkPress lastPress_;
};
