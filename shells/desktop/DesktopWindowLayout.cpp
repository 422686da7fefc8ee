#include "backends/gdk/DesktopSettings.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/panel/HostedWidget.hpp"

#include <cmath>
#include <functional>
#include <memory>

namespace desktop {
namespace {

shell::PanelEdge edgeOn(GdkScreen* screen) {
    if (!windowing::showsThroughWindows(screen)) return shell::PanelEdge::Square;
    return windowing::takesWindowShadows(screen) ? shell::PanelEdge::Soft : shell::PanelEdge::Hard;
}

struct RegionEnd {
    void operator()(cairo_region_t* region) const { cairo_region_destroy(region); }
};
using Region = std::unique_ptr<cairo_region_t, RegionEnd>;

/// The distance in whole points from the edge to the corner's arc, `row` points below the top.
int cornerInset(int row, double radius) {
    const double fromCentre = radius - row - 0.5;
    if (fromCentre <= 0) return 0;
    return static_cast<int>(
        std::lround(radius - std::sqrt(radius * radius - fromCentre * fromCentre)));
}

Region roundedRegion(const CGRect& rect, CGFloat radius) {
    Region region(cairo_region_create());
    const auto x = static_cast<int>(rect.origin.x);
    const auto y = static_cast<int>(rect.origin.y);
    const auto width = static_cast<int>(rect.size.width);
    const auto height = static_cast<int>(rect.size.height);
    for (int row = 0; row < height; ++row) {
        const int inset = cornerInset(std::min(row, height - 1 - row), radius);
        const cairo_rectangle_int_t line = {x + inset, y + row, width - 2 * inset, 1};
        cairo_region_union_rectangle(region.get(), &line);
    }
    return region;
}

/// Tells the window system which part of the window is the panel: clicks on the shadow and beside
/// round corners go to the window below. Without translucency the window is cut to that shape.
void outlineWindow(GdkWindow* window, const shell::PanelLayout& layout,
                   const shell::PanelLook& look) {
    const Region panel = roundedRegion(layout.panel, shell::cornerRadius(look.edge) * look.zoom);
    gdk_window_input_shape_combine_region(window, panel.get(), 0, 0);
    const bool cut = look.edge == shell::PanelEdge::Square;
    gdk_window_shape_combine_region(window, cut ? panel.get() : nullptr, 0, 0);
}

}  // namespace

CGSize DesktopWindow::roomForPanel() const {
    const CGSize available = place_->availableSize(window_.get(), look_);
    const UIEdgeInsets margins = shell::panelMargins(look_);
    return {available.width - margins.left - margins.right,
            available.height - margins.top - margins.bottom};
}

/// A widget makes its rows as wide as its parent when it is assembled: a new width requires a new
/// presentation.
void DesktopWindow::followScreen() {
    look_ = {edgeOn(screen_), textScale_};
    look_.zoom = shell::zoomWithin(textScale_, roomForPanel().width);
    const CGFloat width =
        shell::parentWidthForModel(machineModel(), roomForPanel().width / look_.zoom);
    if (width == parentWidth_) return;
    parentWidth_ = width;
    const bool wasPresented = widget_.isPresented();
    if (wasPresented) widget_.dismiss();
    widget_.setParentWidth(width);
    if (wasPresented) widget_.present();
}

/// The layout for the content and what is below it as they are now.
shell::PanelLayout DesktopWindow::wantedLayout() {
    // One button leads to the settings, below both notices where there are two.
    shown_ = shell::panelContent(
        widget_, panel_->hasNoticeButton() ? std::function<void()>() : panel_->settingsHandler());
    shown_.size.height += panel_->footerHeight(shown_.size.width);
    panel_->setWidgetView(shown_.view);
    return shell::panelLayout(shown_.size, place_->availableSize(window_.get(), look_), look_);
}

void DesktopWindow::layout() {
    followScreen();
    const shell::PanelLayout wanted = wantedLayout();
    place_->arrange(window_.get(), wanted, look_);
    applyLayout(wanted);
}

/// The window manager decided on another size.
void DesktopWindow::windowHasSize(const CGSize& size) {
    if (size == size_) return;
    applyLayout(shell::panelLayoutInWindow(shown_.size, size, look_));
}

void DesktopWindow::applyLayout(const shell::PanelLayout& layout) {
    size_ = layout.window;
    const shell::PanelLayout points = shell::inPoints(layout, look_.zoom);
    content_->setZoom(look_.zoom);
    content_->setFrame({{0, 0}, points.window});
    panel_->setLayout(points, look_.edge);
    outlineWindow(window_.get(), layout, look_);
}

}  // namespace desktop
