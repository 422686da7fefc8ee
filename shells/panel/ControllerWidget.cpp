#include "shells/panel/ControllerWidget.hpp"

#include <algorithm>

bool ControllerWidget::becomesDismissed() {
    rows_.follow(nullptr);
    return std::exchange(presented_, false);
}

void ControllerWidget::readAgain() {
    if (isPresented()) rows_.readAgain();
}

NSString ControllerWidget::categoryOf(const UIView& view) const {
    const auto row = std::ranges::find_if(
        rows_.rows(), [&](const auto& each) { return each.slider.lock().get() == &view; });
    return row == rows_.rows().end() ? std::nullopt : row->category;
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
