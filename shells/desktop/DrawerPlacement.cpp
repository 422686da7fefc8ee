#include "shells/desktop/DrawerPlacement.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

/// How far an icon reaches from the point that its tray tells of, which is somewhere in it. Points.
constexpr CGFloat iconReach = 20;

CGFloat distance(const CGPoint& point, const CGRect& rect) {
    const CGFloat across =
        std::max({rect.origin.x - point.x, point.x - CGRectGetMaxX(rect), CGFloat{0}});
    const CGFloat down =
        std::max({rect.origin.y - point.y, point.y - CGRectGetMaxY(rect), CGFloat{0}});
    return std::hypot(across, down);
}

enum class Side { Below, Above, RightOf, LeftOf };

/// Away from the panel that keeps the icon's place for itself.
std::optional<Side> sideOfReserved(const CGPoint& icon, const CGRect& work) {
    if (icon.y < work.origin.y) return Side::Below;
    if (icon.y >= CGRectGetMaxY(work)) return Side::Above;
    if (icon.x < work.origin.x) return Side::RightOf;
    if (icon.x >= CGRectGetMaxX(work)) return Side::LeftOf;
    return std::nullopt;
}

/// Away from the nearest edge; in a corner from the horizontal one, since most panels lie along it.
Side sideOfNearestEdge(const CGPoint& icon, const CGRect& monitor) {
    constexpr CGFloat thickestPanel = 64;  // points
    const CGFloat top = icon.y - monitor.origin.y;
    const CGFloat bottom = CGRectGetMaxY(monitor) - icon.y;
    const CGFloat left = icon.x - monitor.origin.x;
    const CGFloat right = CGRectGetMaxX(monitor) - icon.x;
    const CGFloat horizontal = std::min(top, bottom);
    if (horizontal <= thickestPanel || horizontal <= std::min(left, right))
        return top <= bottom ? Side::Below : Side::Above;
    return left <= right ? Side::RightOf : Side::LeftOf;
}

CGPoint beside(const CGPoint& icon, const CGSize& drawer, Side side, CGFloat gap) {
    const CGFloat away = iconReach + gap;
    const CGFloat centredX = icon.x - drawer.width / 2;
    const CGFloat centredY = icon.y - drawer.height / 2;
    switch (side) {
        case Side::Below:
            return {centredX, icon.y + away};
        case Side::Above:
            return {centredX, icon.y - away - drawer.height};
        case Side::RightOf:
            return {icon.x + away, centredY};
        case Side::LeftOf:
            break;
    }
    return {icon.x - away - drawer.width, centredY};
}

CGFloat within(CGFloat wanted, CGFloat length, CGFloat begin, CGFloat room, CGFloat gap) {
    const CGFloat latest = begin + room - gap - length;
    return std::floor(std::max(begin + gap, std::min(wanted, latest)));
}

}  // namespace

const MonitorArea* monitorAt(const CGPoint& point, std::span<const MonitorArea> monitors) {
    const auto nearest =
        std::ranges::min_element(monitors, [&](const MonitorArea& one, const MonitorArea& other) {
            return distance(point, one.whole) < distance(point, other.whole);
        });
    return nearest == monitors.end() ? nullptr : &*nearest;
}

CGSize roomForDrawer(const MonitorArea& monitor, CGFloat gap) {
    return {std::max<CGFloat>(1, monitor.work.size.width - 2 * gap),
            std::max<CGFloat>(1, monitor.work.size.height - 2 * gap)};
}

CGPoint drawerOrigin(const CGPoint& icon, const CGSize& drawer, const MonitorArea& monitor,
                     CGFloat gap) {
    const Side side =
        sideOfReserved(icon, monitor.work).value_or(sideOfNearestEdge(icon, monitor.whole));
    const CGPoint wanted = beside(icon, drawer, side, gap);
    const CGRect& work = monitor.work;
    return {within(wanted.x, drawer.width, work.origin.x, work.size.width, gap),
            within(wanted.y, drawer.height, work.origin.y, work.size.height, gap)};
}
