#include "backends/gdk/GdkWindowShadow.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/WindowOutline.hpp"

namespace {

PanelEdge edgeOn(GdkScreen* screen) {
    if (!showsThroughWindows(screen)) return PanelEdge::Square;
    return takesWindowShadows(screen) ? PanelEdge::Soft : PanelEdge::Hard;
}

}  // namespace

/// Of what there is to show on this screen now.
PanelLayout DesktopWindow::wantedLayout() {
    edge_ = edgeOn(screen_);
    shown_ = panelContent(widget_);
    shown_.size.height += panel_->noticeHeight();
    panel_->setWidgetView(shown_.view);
    return panelLayout(shown_.size, place_->availableSize(window_.get(), edge_), edge_);
}

void DesktopWindow::layout() {
    const PanelLayout wanted = wantedLayout();
    place_->arrange(window_.get(), wanted, edge_);
    applyLayout(wanted);
}

/// The window manager has the last word.
void DesktopWindow::windowHasSize(const CGSize& size) {
    if (size == size_) return;
    applyLayout(panelLayoutInWindow(shown_.size, size, edge_));
}

void DesktopWindow::applyLayout(const PanelLayout& layout) {
    size_ = layout.window;
    content_->setFrame({{0, 0}, layout.window});
    panel_->setLayout(layout, edge_);
    outlineWindow(window_.get(), layout, edge_);
}
