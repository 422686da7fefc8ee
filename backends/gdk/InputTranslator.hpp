#pragma once

#include "platform/uikit/UIEvent.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <map>
#include <memory>
#include <optional>

namespace windowing {

/// Where and when a button or finger went down, which a window manager needs to move the window.
struct Press {
    GdkDevice* device = nullptr;  ///< Not owned; nullptr before the first press.
    int button = 1;
    int rootX = 0;  ///< Screen coordinates.
    int rootY = 0;
    guint32 time = 0;
};

/// Translates GDK's input events into the touches, wheel steps and keys of a view tree. Event
/// coordinates are the window's points, and the tree's root lies at the window's origin. Main
/// thread.
class InputTranslator {
 public:
    explicit InputTranslator(std::shared_ptr<UIWindow> content);

    /// What a GdkWindow must select.
    static constexpr int eventMask =
        GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_BUTTON1_MOTION_MASK | GDK_TOUCH_MASK |
        GDK_SCROLL_MASK | GDK_SMOOTH_SCROLL_MASK | GDK_KEY_PRESS_MASK | GDK_LEAVE_NOTIFY_MASK;

    /// Answers whether a view made use of the event.
    bool handle(const GdkEvent& event);
    const Press& lastPress() const { return lastPress_; }

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
    Press lastPress_;
};

/// The views' key behind a key press; nullopt for a key they do not know, and for one held with
/// Control, Alt or Super, which belongs to the desktop.
std::optional<UIKey> keyOf(const GdkEventKey& event);
/// Whether the key is typed alone or with Shift: with other modifiers it belongs to the desktop.
bool isTypedAlone(const GdkEventKey& event);

}  // namespace windowing
