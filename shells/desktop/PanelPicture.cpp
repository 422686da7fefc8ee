#include "shells/desktop/PanelPicture.hpp"

#include "backends/cairo/CairoPicture.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/Notices.hpp"

namespace desktop {
namespace {
constexpr CGFloat scale = 2;            // pixels a point
constexpr CGFloat longestSide = 16000;  // points; what a picture of that scale can hold
}  // namespace

bool paintPanelPicture(shell::PanelWidget& widget, const std::shared_ptr<shell::PanelView>& panel,
                       const std::string& path) {
    widget.present();
    shell::PanelContent content = shell::panelContent(widget);
    content.size.height += panel->footerHeight(content.size.width);
    const shell::PanelLayout layout =
        shell::panelLayout(content.size, {longestSide, longestSide}, shell::PanelEdge::Soft);
    panel->setWidgetView(content.view);
    panel->setLayout(layout, shell::PanelEdge::Soft);
    const auto window = std::make_shared<UIWindow>(CGRect{{0, 0}, layout.window});
    window->addSubview(panel);
    const bool written = painting::paintViewToPNG(window, path, scale);
    panel->setWidgetView(nullptr);
    widget.dismiss();
    return written;
}

}  // namespace desktop
