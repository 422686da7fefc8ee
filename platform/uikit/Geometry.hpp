#pragma once

#include <cstdint>
#include <string>

/// Coordinates are in points: at scale 1 a point is a pixel. x grows to the right, y downwards.
#if UINTPTR_MAX == 0xffffffffU
using CGFloat = float;
#else
using CGFloat = double;
#endif

struct CGPoint {
    CGFloat x = 0;
    CGFloat y = 0;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    CGFloat width = 0;
    CGFloat height = 0;
    bool operator==(const CGSize&) const = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    bool operator==(const CGRect&) const = default;
};

struct UIEdgeInsets {
    CGFloat top = 0;
    CGFloat left = 0;
    CGFloat bottom = 0;
    CGFloat right = 0;
    bool operator==(const UIEdgeInsets&) const = default;
};

constexpr CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
    return {{x, y}, {width, height}};
}
constexpr CGFloat CGRectGetMaxX(const CGRect& r) {
    return r.origin.x + r.size.width;
}
constexpr CGFloat CGRectGetMaxY(const CGRect& r) {
    return r.origin.y + r.size.height;
}
constexpr CGFloat CGRectGetMidX(const CGRect& r) {
    return r.origin.x + r.size.width / 2;
}
constexpr CGFloat CGRectGetMidY(const CGRect& r) {
    return r.origin.y + r.size.height / 2;
}
/// No area. A negative or undefined width or height counts as none.
constexpr bool CGRectIsEmpty(const CGRect& r) {
    return !(r.size.width > 0 && r.size.height > 0);
}
/// The left and top edges belong to the rectangle, the right and bottom ones do not.
constexpr bool CGRectContainsPoint(const CGRect& r, const CGPoint& p) {
    return p.x >= r.origin.x && p.x < CGRectGetMaxX(r) && p.y >= r.origin.y &&
           p.y < CGRectGetMaxY(r);
}
constexpr CGRect CGRectOffset(const CGRect& r, CGFloat dx, CGFloat dy) {
    return {{r.origin.x + dx, r.origin.y + dy}, r.size};
}
/// Smaller by dx at the left and right, by dy at the top and bottom; larger when negative.
constexpr CGRect CGRectInset(const CGRect& r, CGFloat dx, CGFloat dy) {
    return {{r.origin.x + dx, r.origin.y + dy}, {r.size.width - 2 * dx, r.size.height - 2 * dy}};
}
/// The common area, empty at {0, 0} when there is none.
CGRect CGRectIntersection(const CGRect& a, const CGRect& b);
/// Whether they have an area in common. An empty or undefined one has none with any.
constexpr bool CGRectIntersectsRect(const CGRect& a, const CGRect& b) {
    return a.origin.x < CGRectGetMaxX(b) && b.origin.x < CGRectGetMaxX(a) &&
           a.origin.y < CGRectGetMaxY(b) && b.origin.y < CGRectGetMaxY(a) && !CGRectIsEmpty(a) &&
           !CGRectIsEmpty(b);
}
/// The smallest rectangle around both; an empty one adds nothing.
CGRect CGRectUnion(const CGRect& a, const CGRect& b);

/// "{320, 270}": up to 17 significant digits, no trailing zeros.
std::string NSStringFromCGSize(const CGSize& size);
