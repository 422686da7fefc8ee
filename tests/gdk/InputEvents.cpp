#include "tests/gdk/InputEvents.hpp"

#include <array>
#include <sstream>

namespace {

template <class T>
std::string text(const T& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

GdkEvent scrollEvent(GdkScrollDirection direction, double deltaX, double deltaY, guint state) {
    GdkEvent event = {};
    event.scroll.type = GDK_SCROLL;
    event.scroll.direction = direction;
    event.scroll.x = event.scroll.y = 50;
    event.scroll.delta_x = deltaX;
    event.scroll.delta_y = deltaY;
    event.scroll.state = state;
    return event;
}

}  // namespace

GdkEvent buttonEvent(GdkEventType type, double x, double y, guint button) {
    GdkEvent event = {};
    event.button.type = type;
    event.button.x = x;
    event.button.y = y;
    event.button.x_root = x + 1000;
    event.button.y_root = y + 2000;
    event.button.button = button;
    event.button.time = 77;
    return event;
}

GdkEvent motionEvent(double x, double y) {
    GdkEvent event = {};
    event.motion.type = GDK_MOTION_NOTIFY;
    event.motion.x = x;
    event.motion.y = y;
    return event;
}

GdkEvent touchEvent(GdkEventType type, int finger, double x, double y) {
    static std::array<char, 16> sequences;
    GdkEvent event = {};
    event.touch.type = type;
    event.touch.x = x;
    event.touch.y = y;
    event.touch.sequence =
        reinterpret_cast<GdkEventSequence*>(&sequences.at(static_cast<std::size_t>(finger)));
    return event;
}

GdkEvent wheelEvent(GdkScrollDirection direction, guint state) {
    return scrollEvent(direction, 0, 0, state);
}

GdkEvent smoothEvent(double deltaX, double deltaY, guint state) {
    return scrollEvent(GDK_SCROLL_SMOOTH, deltaX, deltaY, state);
}

GdkEvent keyEvent(guint keyval, guint state) {
    GdkEvent event = {};
    event.key.type = GDK_KEY_PRESS;
    event.key.keyval = keyval;
    event.key.state = state;
    return event;
}

GdkEvent leaveEvent(GdkCrossingMode mode) {
    GdkEvent event = {};
    event.crossing.type = GDK_LEAVE_NOTIFY;
    event.crossing.mode = mode;
    return event;
}

void InputRecorder::record(const char* what, const UITouchSet& touches) {
    const CGPoint point = touches.front()->locationInView(this);
    log.push_back(std::string(what) + " " + text(point.x) + "," + text(point.y));
}

void InputRecorder::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>&) {
    record("began", touches);
}

void InputRecorder::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>&) {
    record("moved", touches);
}

void InputRecorder::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>&) {
    record("ended", touches);
}

void InputRecorder::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>&) {
    record("cancelled", touches);
}

bool InputRecorder::scrolled(const CGPoint& /*point*/, double steps) {
    log.push_back("scrolled " + text(steps));
    return true;
}

bool InputRecorder::keyPressed(UIKey key) {
    log.push_back("key " + text(static_cast<int>(key)));
    return true;
}
