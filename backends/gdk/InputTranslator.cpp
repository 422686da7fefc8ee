#include "backends/gdk/InputTranslator.hpp"

#include <gdk/gdkkeysyms.h>

#include <algorithm>
#include <cmath>

namespace windowing {

namespace {

constexpr double stepsWithShift = 10;

Press pressFrom(const GdkEventButton& event) {
    return {event.device, static_cast<int>(event.button), static_cast<int>(event.x_root),
            static_cast<int>(event.y_root), event.time};
}

Press pressFrom(const GdkEventTouch& event) {
    return {event.device, 1, static_cast<int>(event.x_root), static_cast<int>(event.y_root),
            event.time};
}

/// A pointer that emulates a finger counts as a finger.
UITouchType touchTypeOf(const GdkEventButton& event) {
    GdkDevice* source = gdk_event_get_source_device(reinterpret_cast<const GdkEvent*>(&event));
    const bool isFinger = source && gdk_device_get_source(source) == GDK_SOURCE_TOUCHSCREEN;
    return isFinger ? UITouchType::Direct : UITouchType::IndirectPointer;
}

/// Positive away from the user and to the right: both increase a slider. A touchpad's event has
/// both directions, and only the dominant one counts.
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

InputTranslator::InputTranslator(std::shared_ptr<UIWindow> content)
    : content_(std::move(content)) {}

bool InputTranslator::handle(const GdkEvent& event) {
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

bool InputTranslator::press(const GdkEventButton& event) {
    if (event.button != GDK_BUTTON_PRIMARY) return false;
    pressed_ = true;
    lastPress_ = pressFrom(event);
    content_->sendTouch(UITouchPhase::Began, locationIn(*content_, event), pointerTouch,
                        touchTypeOf(event));
    return true;
}

bool InputTranslator::release(const GdkEventButton& event) {
    if (event.button != GDK_BUTTON_PRIMARY || !pressed_) return false;
    pressed_ = false;
    content_->sendTouch(UITouchPhase::Ended, locationIn(*content_, event), pointerTouch);
    return true;
}

bool InputTranslator::motion(const GdkEventMotion& event) {
    if (!pressed_) return false;
    content_->sendTouch(UITouchPhase::Moved, locationIn(*content_, event), pointerTouch);
    return true;
}

bool InputTranslator::touch(const GdkEventTouch& event) {
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

/// The smallest free finger number.
int InputTranslator::beginSequence(const GdkEventSequence* sequence) {
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

bool InputTranslator::scroll(const GdkEventScroll& event) {
    const double factor = (event.state & GDK_SHIFT_MASK) != 0 ? stepsWithShift : 1;
    const double steps = stepsOf(event) * factor;
    // The event that ends a touchpad's gesture moves nothing.
    if (steps == 0 || !std::isfinite(steps)) return false;
    return content_->sendScroll(locationIn(*content_, event), steps);
}

bool InputTranslator::key(const GdkEventKey& event) {
    const std::optional<UIKey> key = keyOf(event);
    return key && content_->sendKey(*key);
}

/// Another program has grabbed the pointer, so its release will not arrive here.
bool InputTranslator::leave(const GdkEventCrossing& event) {
    return event.mode == GDK_CROSSING_GRAB && cancel();
}

bool InputTranslator::cancel() {
    const bool any = pressed_ || !sequences_.empty();
    pressed_ = false;
    sequences_.clear();
    content_->cancelTouches();
    return any;
}

bool isTypedAlone(const GdkEventKey& event) {
    constexpr guint desktopModifiers =
        GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK | GDK_META_MASK | GDK_HYPER_MASK;
    return (event.state & desktopModifiers) == 0;
}

std::optional<UIKey> keyOf(const GdkEventKey& event) {
    if (!isTypedAlone(event)) return std::nullopt;
    const bool shift = (event.state & GDK_SHIFT_MASK) != 0;
    switch (event.keyval) {
        case GDK_KEY_Tab:
        case GDK_KEY_KP_Tab:
            return shift ? UIKey::BackTab : UIKey::Tab;
        case GDK_KEY_ISO_Left_Tab:
            return UIKey::BackTab;
        case GDK_KEY_Left:
        case GDK_KEY_KP_Left:
            return UIKey::Left;
        case GDK_KEY_Right:
        case GDK_KEY_KP_Right:
            return UIKey::Right;
        case GDK_KEY_Up:
        case GDK_KEY_KP_Up:
            return UIKey::Up;
        case GDK_KEY_Down:
        case GDK_KEY_KP_Down:
            return UIKey::Down;
        case GDK_KEY_Page_Up:
        case GDK_KEY_KP_Page_Up:
            return UIKey::PageUp;
        case GDK_KEY_Page_Down:
        case GDK_KEY_KP_Page_Down:
            return UIKey::PageDown;
        case GDK_KEY_Home:
        case GDK_KEY_KP_Home:
            return UIKey::Home;
        case GDK_KEY_End:
        case GDK_KEY_KP_End:
            return UIKey::End;
        case GDK_KEY_Return:
        case GDK_KEY_KP_Enter:
        case GDK_KEY_ISO_Enter:
        case GDK_KEY_space:
        case GDK_KEY_KP_Space:
            return UIKey::Press;
        default:
            return std::nullopt;
    }
}

}  // namespace windowing
