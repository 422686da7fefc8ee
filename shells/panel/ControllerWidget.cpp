#include "shells/panel/ControllerWidget.hpp"

void ControllerWidget::readAgain() {
    constexpr const char* selector = "updateValues";
    if (!isPresented()) return;
    if (controller().respondsToSelector(selector)) {
        controller().performSelector(selector, {});
        return;
    }
    dismiss();
    present();
}
