#include "shells/panel/PanelWidget.hpp"

void PanelWidget::readAgain() {
    constexpr const char* selector = "updateValues";
    if (!isPresented()) return;
    if (controller().respondsToSelector(selector)) {
        controller().performSelector(selector, {});
        return;
    }
    dismiss();
    present();
}
