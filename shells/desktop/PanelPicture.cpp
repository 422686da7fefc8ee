#include "shells/desktop/PanelPicture.hpp"

#include "backends/cairo/CairoPicture.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/desktop/PanelContent.hpp"
#include "shells/desktop/PanelView.hpp"

namespace {
constexpr CGFloat scale = 2;            // pixels a point
constexpr CGFloat longestSide = 16000;  // points; what a picture of that scale can hold
}  // namespace

bool paintPanelPicture(HostedWidget& widget, const std::string& path) {
    widget.present();
    const PanelContent content = panelContent(widget);
    const PanelLayout layout =
        panelLayout(content.size, {longestSide, longestSide}, PanelEdge::Soft);
    const auto panel = std::make_shared<PanelView>();
    panel->setWidgetView(content.view);
    panel->setLayout(layout, PanelEdge::Soft);
    const auto window = std::make_shared<UIWindow>(CGRect{{0, 0}, layout.window});
    window->addSubview(panel);
    const bool written = paintViewToPNG(window, path, scale);
    panel->setWidgetView(nullptr);
    widget.dismiss();
    return written;
}
