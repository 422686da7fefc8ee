#include "shells/panel/PanelLayout.hpp"

#include <algorithm>
#include <cmath>

namespace {

// Points. Also what is left of a widget without rows: enough to be seen, and to be dragged.
constexpr CGFloat smallestWidth = 160;
constexpr CGFloat smallestHeight = 64;

/// A widget asks for nonsense only by mistake; the panel then is a small one.
CGFloat panelLength(CGFloat wanted, CGFloat smallest, CGFloat available) {
    const CGFloat whole = std::isfinite(wanted) ? std::ceil(wanted) : smallest;
    return std::max<CGFloat>(1, std::min(std::max(whole, smallest), available));
}

}  // namespace

CGFloat cornerRadius(PanelEdge edge) {
    return edge == PanelEdge::Square ? 0 : panelRadius;
}

UIEdgeInsets panelMargins(PanelEdge edge) {
    if (edge != PanelEdge::Soft) return {};
    return {.top = 18, .left = 24, .bottom = 32, .right = 24};
}

PanelLayout panelLayout(const CGSize& widget, const CGSize& available, PanelEdge edge) {
    const UIEdgeInsets margins = panelMargins(edge);
    const CGFloat across = margins.left + margins.right;
    const CGFloat down = margins.top + margins.bottom;
    const CGSize panel = {panelLength(widget.width, smallestWidth, available.width - across),
                          panelLength(widget.height, smallestHeight, available.height - down)};
    return panelLayoutInWindow(widget, {panel.width + across, panel.height + down}, edge);
}

PanelLayout panelLayoutInWindow(const CGSize& widget, const CGSize& window, PanelEdge edge) {
    const UIEdgeInsets margins = panelMargins(edge);
    const CGSize room = {window.width - margins.left - margins.right,
                         window.height - margins.top - margins.bottom};
    const CGSize size = {panelLength(widget.width, smallestWidth, room.width),
                         panelLength(widget.height, smallestHeight, room.height)};
    const CGRect panel = {{margins.left + std::floor((room.width - size.width) / 2),
                           margins.top + std::floor((room.height - size.height) / 2)},
                          size};
    return {window, panel, panel};
}
