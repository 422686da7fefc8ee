#include "backends/gdk/GdkWindowShadow.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/WindowOutline.hpp"
#include "shells/panel/HostedWidget.hpp"

namespace {

PanelEdge edgeOn(GdkScreen* screen) {
    if (!showsThroughWindows(screen)) return PanelEdge::Square;
    return takesWindowShadows(screen) ? PanelEdge::Soft : PanelEdge::Hard;
}

}  // namespace

CGSize DesktopWindow::roomForPanel() const {
    const CGSize available = place_->availableSize(window_.get(), look_);
    const UIEdgeInsets margins = panelMargins(look_);
    return {available.width - margins.left - margins.right,
            available.height - margins.top - margins.bottom};
}

/// A widget makes its rows as wide as they are wanted while it is assembled: for another width it
/// is assembled anew.
void DesktopWindow::followScreen() {
    look_ = {edgeOn(screen_), textScale_};
    look_.zoom = zoomWithin(textScale_, roomForPanel().width);
    const CGFloat width = parentWidthForModel(machineModel(), roomForPanel().width / look_.zoom);
    if (width == parentWidth_) return;
    parentWidth_ = width;
    const bool wasPresented = widget_.isPresented();
    if (wasPresented) widget_.dismiss();
    widget_.setParentWidth(width);
    if (wasPresented) widget_.present();
}

/// Of what there is to show now.
PanelLayout DesktopWindow::wantedLayout() {
    shown_ = panelContent(widget_);
    shown_.size.height += panel_->noticeHeight();
    panel_->setWidgetView(shown_.view);
    return panelLayout(shown_.size, place_->availableSize(window_.get(), look_), look_);
}

void DesktopWindow::layout() {
    followScreen();
    const PanelLayout wanted = wantedLayout();
    place_->arrange(window_.get(), wanted, look_);
    applyLayout(wanted);
}

/// The window manager has the last word.
void DesktopWindow::windowHasSize(const CGSize& size) {
    if (size == size_) return;
    applyLayout(panelLayoutInWindow(shown_.size, size, look_));
}

void DesktopWindow::applyLayout(const PanelLayout& layout) {
    size_ = layout.window;
    const PanelLayout points = inPoints(layout, look_.zoom);
    content_->setZoom(look_.zoom);
    content_->setFrame({{0, 0}, points.window});
    panel_->setLayout(points, look_.edge);
    outlineWindow(window_.get(), layout, look_);
}
