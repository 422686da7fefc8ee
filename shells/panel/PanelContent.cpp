#include "shells/panel/PanelContent.hpp"

#include "platform/uikit/UIAccessibility.hpp"
#include "shells/panel/EmptyNotice.hpp"

PanelContent panelContent(PanelWidget& widget) {
    const CGSize wanted = widget.preferredSize();
    if (!accessibilityElements(widget.view()).empty()) return {widget.view(), wanted};
    const std::shared_ptr<UIView> notice = makeEmptyNotice(wanted.width);
    return {notice, notice->frame().size};
}
