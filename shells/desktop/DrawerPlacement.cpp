#include "shells/desktop/DrawerPlacement.hpp"

#include <algorithm>
#include <cmath>

namespace desktop {
namespace {

/// The distance in points that an icon reaches from the reported point, which is anywhere inside
/// it.
constexpr CGFloat iconReach = 20;

CGFloat distance(const CGPoint& point, const CGRect& rect) {
    const CGFloat across =
        std::max({rect.origin.x - point.x, point.x - CGRectGetMaxX(rect), CGFloat{0}});
    const CGFloat down =
        std::max({rect.origin.y - point.y, point.y - CGRectGetMaxY(rect), CGFloat{0}});
    return std::hypot(across, down);
}

enum class Side { Below, Above, RightOf, LeftOf };

/// Away from the panel that reserves the icon's space.
std::optional<Side> sideOfReserved(const CGPoint& icon, const CGRect& work) {
    if (icon.y < work.origin.y) return Side::Below;
    if (icon.y >= CGRectGetMaxY(work)) return Side::Above;
    if (icon.x < work.origin.x) return Side::RightOf;
    if (icon.x >= CGRectGetMaxX(work)) return Side::LeftOf;
    return std::nullopt;
}

/// Away from the nearest edge; in a corner, from the horizontal one, since most panels are
/// horizontal.
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

/// `away` is from the icon's place to the drawer.
CGPoint beside(const CGPoint& icon, const CGSize& drawer, Side side, CGFloat away) {
    switch (side) {
        case Side::Below:
            return {icon.x - drawer.width / 2, icon.y + away};
        case Side::Above:
            return {icon.x - drawer.width / 2, icon.y - away - drawer.height};
        case Side::RightOf:
            return {icon.x + away, icon.y - drawer.height / 2};
        case Side::LeftOf:
            break;
    }
    return {icon.x - away - drawer.width, icon.y - drawer.height / 2};
}

/// The wanted position, moved into a corner that is near: most icons are close to the end of their
/// panel, and a drawer that just misses the corner looks misplaced.
CGFloat towardsCorner(CGFloat wanted, CGFloat length, CGFloat begin, CGFloat room) {
    const CGFloat latest = begin + room - length;
    const CGFloat near = length / 2;  // The icon still is beside the drawer then.
    const bool isInFirstHalf = wanted - begin <= latest - wanted;
    if (isInFirstHalf) return wanted - begin < near ? begin : wanted;
    return latest - wanted < near ? latest : wanted;
}

CGFloat within(CGFloat wanted, CGFloat length, CGFloat begin, CGFloat room, CGFloat gap) {
    const CGFloat latest = begin + room - gap - length;
    return std::floor(std::max(begin + gap, std::min(wanted, latest)));
}

bool isAlong(CGFloat distance) {
    constexpr CGFloat floating = 16;  // Points: some panels keep a gap to the edge.
    return std::abs(distance) <= floating;
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

MonitorArea withoutPanel(const MonitorArea& monitor, const CGRect& window) {
    constexpr CGFloat thickest = 128;  // points
    const CGRect panel = CGRectIntersection(window, monitor.whole);
    const CGFloat left = monitor.work.origin.x;
    const CGFloat top = monitor.work.origin.y;
    const CGFloat right = CGRectGetMaxX(monitor.work);
    const CGFloat bottom = CGRectGetMaxY(monitor.work);
    MonitorArea rest = monitor;
    if (std::min(panel.size.width, panel.size.height) > thickest || CGRectIsEmpty(panel))
        return rest;
    const auto keep = [&rest](CGFloat x, CGFloat y, CGFloat toX, CGFloat toY) {
        rest.work = CGRectMake(x, y, std::max<CGFloat>(0, toX - x), std::max<CGFloat>(0, toY - y));
    };
    if (panel.size.width >= panel.size.height) {
        if (isAlong(panel.origin.y - monitor.whole.origin.y))
            keep(left, std::max(top, CGRectGetMaxY(panel)), right, bottom);
        else if (isAlong(CGRectGetMaxY(panel) - CGRectGetMaxY(monitor.whole)))
            keep(left, top, right, std::min(bottom, panel.origin.y));
    } else if (isAlong(panel.origin.x - monitor.whole.origin.x)) {
        keep(std::max(left, CGRectGetMaxX(panel)), top, right, bottom);
    } else if (isAlong(CGRectGetMaxX(panel) - CGRectGetMaxX(monitor.whole))) {
        keep(left, top, std::min(right, panel.origin.x), bottom);
    }
    return rest;
}

CGPoint drawerOrigin(const CGPoint& icon, const CGSize& drawer, const MonitorArea& monitor,
                     CGFloat gap) {
    const CGRect& work = monitor.work;
    const std::optional<Side> reserved = sideOfReserved(icon, work);
    const Side side = reserved.value_or(sideOfNearestEdge(icon, monitor.whole));
    // Beside a panel it is the work area that keeps the drawer away.
    CGPoint wanted = beside(icon, drawer, side, reserved ? 0 : iconReach + gap);
    if (side == Side::Below || side == Side::Above)
        wanted.x = towardsCorner(wanted.x, drawer.width, work.origin.x, work.size.width);
    else
        wanted.y = towardsCorner(wanted.y, drawer.height, work.origin.y, work.size.height);
    return {within(wanted.x, drawer.width, work.origin.x, work.size.width, gap),
            within(wanted.y, drawer.height, work.origin.y, work.size.height, gap)};
}

void IconSpot::pressed(const CGPoint& point) {
    constexpr CGFloat widest = 48;  // points
    const bool isNear = place_ && std::hypot(point.x - place_->x, point.y - place_->y) <= widest;
    if (!isNear) place_ = point;
}

}  // namespace desktop
