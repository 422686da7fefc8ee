#include "shells/desktop/OutsidePress.hpp"

#include <utility>

OutsidePress::Step OutsidePress::step(const GdkEvent& event, bool isOutside) {
    switch (event.type) {
        case GDK_BUTTON_PRESS:
        case GDK_TOUCH_BEGIN:
            if (!isOutside) return Step::None;
            isHeld_ = true;
            return Step::Part;
        case GDK_BUTTON_RELEASE:
        case GDK_TOUCH_END:
        case GDK_TOUCH_CANCEL:
        case GDK_GRAB_BROKEN:
            return std::exchange(isHeld_, false) ? Step::End : Step::None;
        default:
            return Step::None;
    }
}
