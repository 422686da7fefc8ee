#include "shells/panel/ControllerWidget.hpp"

bool ControllerWidget::becomesDismissed() {
    rows_.follow(nullptr);
    return std::exchange(presented_, false);
}

void ControllerWidget::readAgain() {
    if (isPresented()) rows_.readAgain();
}

void ControllerWidget::readRows() {
    constexpr const char* selector = "updateValues";
    if (controller().respondsToSelector(selector)) {
        controller().performSelector(selector, {});
        return;
    }
    dismiss();
    present();
}
