#include "backends/gdk/GdkInput.hpp"

#include "backends/gdk/GdkKeys.hpp"

#include <algorithm>
#include <cmath>

namespace {

constexpr double stepsWithShift = 10;

GdkPress pressFrom(const GdkEventButton& event) {
    return {event.device, static_cast<int>(event.button), static_cast<int>(event.x_root),
            static_cast<int>(event.y_root), event.time};
}

GdkPress pressFrom(const GdkEventTouch& event) {
    return {event.device, 1, static_cast<int>(event.x_root), static_cast<int>(event.y_root),
            event.time};
}

/// Some systems turn a finger into a pointer, and then it is a finger all the same.
UITouchType touchTypeOf(const GdkEventButton& event) {
    GdkDevice* source = gdk_event_get_source_device(reinterpret_cast<const GdkEvent*>(&event));
    const bool isFinger = source && gdk_device_get_source(source) == GDK_SOURCE_TOUCHSCREEN;
    return isFinger ? UITouchType::Direct : UITouchType::IndirectPointer;
}

/// Positive away from the user, and to the right: either raises a slider. A touchpad's event
/// carries both directions, and only the one that is meant counts.
double stepsOf(const GdkEventScroll& event) {
    switch (event.direction) {
        case GDK_SCROLL_UP:
        case GDK_SCROLL_RIGHT:
            return 1;
        case GDK_SCROLL_DOWN:
        case GDK_SCROLL_LEFT:
            return -1;
        case GDK_SCROLL_SMOOTH:
            break;
    }
    return std::abs(event.delta_x) > std::abs(event.delta_y) ? event.delta_x : -event.delta_y;
}

/// In the content's points.
template <class Event>
CGPoint locationIn(const UIWindow& content, const Event& event) {
    return {static_cast<CGFloat>(event.x) / content.zoom(),
            static_cast<CGFloat>(event.y) / content.zoom()};
}

}  // namespace

GdkInput::GdkInput(std::shared_ptr<UIWindow> content) : content_(std::move(content)) {}

bool GdkInput::handle(const GdkEvent& event) {
    switch (event.type) {
        case GDK_BUTTON_PRESS:
            return press(event.button);
        case GDK_BUTTON_RELEASE:
            return release(event.button);
        case GDK_MOTION_NOTIFY:
            return motion(event.motion);
        case GDK_TOUCH_BEGIN:
        case GDK_TOUCH_UPDATE:
        case GDK_TOUCH_END:
        case GDK_TOUCH_CANCEL:
            return touch(event.touch);
        case GDK_SCROLL:
            return scroll(event.scroll);
        case GDK_KEY_PRESS:
            return key(event.key);
        case GDK_LEAVE_NOTIFY:
            return leave(event.crossing);
        case GDK_GRAB_BROKEN:
        case GDK_UNMAP:
            return cancel();
        default:
            return false;
    }
}

bool GdkInput::press(const GdkEventButton& event) {
    if (event.button != GDK_BUTTON_PRIMARY) return false;
    pressed_ = true;
    lastPress_ = pressFrom(event);
    content_->sendTouch(UITouchPhase::Began, locationIn(*content_, event), pointerTouch,
                        touchTypeOf(event));
    return true;
}

bool GdkInput::release(const GdkEventButton& event) {
    if (event.button != GDK_BUTTON_PRIMARY || !pressed_) return false;
    pressed_ = false;
    content_->sendTouch(UITouchPhase::Ended, locationIn(*content_, event), pointerTouch);
    return true;
}

bool GdkInput::motion(const GdkEventMotion& event) {
    if (!pressed_) return false;
    content_->sendTouch(UITouchPhase::Moved, locationIn(*content_, event), pointerTouch);
    return true;
}

bool GdkInput::touch(const GdkEventTouch& event) {
    const CGPoint point = locationIn(*content_, event);
    if (event.type == GDK_TOUCH_BEGIN) {
        lastPress_ = pressFrom(event);
        content_->sendTouch(UITouchPhase::Began, point, beginSequence(event.sequence),
                            UITouchType::Direct);
        return true;
    }
    const auto found = sequences_.find(event.sequence);
    if (found == sequences_.end()) return false;
    const int identifier = found->second;
    if (event.type == GDK_TOUCH_UPDATE) {
        content_->sendTouch(UITouchPhase::Moved, point, identifier);
        return true;
    }
    sequences_.erase(found);
    const bool ended = event.type == GDK_TOUCH_END;
    content_->sendTouch(ended ? UITouchPhase::Ended : UITouchPhase::Cancelled, point, identifier);
    return true;
}

/// The smallest number that no finger on the screen has.
int GdkInput::beginSequence(const GdkEventSequence* sequence) {
    const auto taken = [this](int identifier) {
        return std::ranges::any_of(
            sequences_, [identifier](const auto& entry) { return entry.second == identifier; });
    };
    int identifier = pointerTouch + 1;
    while (taken(identifier))
        ++identifier;
    sequences_[sequence] = identifier;
    return identifier;
}

bool GdkInput::scroll(const GdkEventScroll& event) {
    const double factor = (event.state & GDK_SHIFT_MASK) != 0 ? stepsWithShift : 1;
    const double steps = stepsOf(event) * factor;
    // The event that ends a touchpad's gesture moves nothing.
    if (steps == 0 || !std::isfinite(steps)) return false;
    return content_->sendScroll(locationIn(*content_, event), steps);
}

bool GdkInput::key(const GdkEventKey& event) {
    const std::optional<UIKey> key = keyOf(event);
    return key && content_->sendKey(*key);
}

/// Another program has taken the pointer: its release will not come here.
bool GdkInput::leave(const GdkEventCrossing& event) {
    return event.mode == GDK_CROSSING_GRAB && cancel();
}

bool GdkInput::cancel() {
    const bool any = pressed_ || !sequences_.empty();
    pressed_ = false;
    sequences_.clear();
    content_->cancelTouches();
    return any;
}
