#include "shells/desktop/PanelPicture.hpp"

#include "backends/cairo/CairoPicture.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/PanelContent.hpp"
#include "shells/panel/PanelView.hpp"

namespace {
constexpr CGFloat scale = 2;            // pixels a point
constexpr CGFloat longestSide = 16000;  // points; what a picture of that scale can hold
}  // namespace

bool paintPanelPicture(PanelWidget& widget, const NSString& notice, const std::string& path) {
    widget.present();
    const auto panel = std::make_shared<PanelView>();
    panel->setNotice(notice);
    PanelContent content = panelContent(widget);
    content.size.height += panel->noticeHeight();
    const PanelLayout layout =
        panelLayout(content.size, {longestSide, longestSide}, PanelEdge::Soft);
    panel->setWidgetView(content.view);
    panel->setLayout(layout, PanelEdge::Soft);
    const auto window = std::make_shared<UIWindow>(CGRect{{0, 0}, layout.window});
    window->addSubview(panel);
    const bool written = paintViewToPNG(window, path, scale);
    panel->setWidgetView(nullptr);
    widget.dismiss();
    return written;
}
