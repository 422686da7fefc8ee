#include "shells/panel/PanelLayout.hpp"

#include <algorithm>
#include <cmath>

namespace shell {
namespace {

/// Removes rounding errors of earlier calculations.
CGFloat exact(CGFloat length) {
    constexpr CGFloat least = 1e-6;
    const CGFloat whole = std::round(length);
    return std::abs(length - whole) < least ? whole : length;
}

/// Invalid sizes of a widget give a small panel.
CGFloat panelLength(CGFloat wanted, CGFloat smallest, CGFloat available) {
    const CGFloat whole = std::isfinite(wanted) ? std::ceil(exact(wanted)) : smallest;
    return std::max<CGFloat>(1, std::min(std::max(whole, std::ceil(exact(smallest))), available));
}

CGSize panelSize(const CGSize& widget, const CGSize& available, CGFloat zoom) {
    return {panelLength(widget.width * zoom, smallestPanel.width * zoom, available.width),
            panelLength(widget.height * zoom, smallestPanel.height * zoom, available.height)};
}

CGRect inPoints(const CGRect& rect, CGFloat zoom) {
    return CGRectMake(exact(rect.origin.x / zoom), exact(rect.origin.y / zoom),
                      exact(rect.size.width / zoom), exact(rect.size.height / zoom));
}

}  // namespace

CGFloat cornerRadius(PanelEdge edge) {
    return edge == PanelEdge::Square ? 0 : panelRadius;
}

UIEdgeInsets panelMargins(const PanelLook& look) {
    if (look.edge != PanelEdge::Soft) return {};
    const auto units = [&look](CGFloat points) { return std::round(points * look.zoom); };
    return {.top = units(18), .left = units(24), .bottom = units(32), .right = units(24)};
}

PanelLayout panelLayout(const CGSize& widget, const CGSize& available, const PanelLook& look) {
    const UIEdgeInsets margins = panelMargins(look);
    const CGFloat across = margins.left + margins.right;
    const CGFloat down = margins.top + margins.bottom;
    const CGSize room = {available.width - across, available.height - down};
    const CGSize panel = panelSize(widget, room, look.zoom);
    return panelLayoutInWindow(widget, {panel.width + across, panel.height + down}, look);
}

PanelLayout panelLayoutInWindow(const CGSize& widget, const CGSize& window, const PanelLook& look) {
    const UIEdgeInsets margins = panelMargins(look);
    const CGSize room = {window.width - margins.left - margins.right,
                         window.height - margins.top - margins.bottom};
    const CGSize size = panelSize(widget, room, look.zoom);
    const CGRect panel = {{margins.left + std::floor((room.width - size.width) / 2),
                           margins.top + std::floor((room.height - size.height) / 2)},
                          size};
    return {window, panel, panel};
}

PanelLayout inPoints(const PanelLayout& layout, CGFloat zoom) {
    return {inPoints({{0, 0}, layout.window}, zoom).size, inPoints(layout.panel, zoom),
            inPoints(layout.viewport, zoom)};
}

CGFloat zoomWithin(CGFloat wanted, CGFloat room) {
    constexpr CGFloat smallest = 0.5;
    return std::max(std::min(wanted, room / smallestPanel.width), std::min(wanted, smallest));
}

CGFloat gapWithin(CGFloat wanted, const CGSize& area) {
    constexpr CGSize someRows = {240, 170};
    const CGFloat most = std::min(area.width - someRows.width, area.height - someRows.height) / 2;
    return std::max<CGFloat>(0, std::min(wanted, std::floor(most)));
}

}  // namespace shell
