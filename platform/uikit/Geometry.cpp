#include "platform/uikit/Geometry.hpp"

#include <algorithm>
#include <cstdio>

CGRect CGRectIntersection(const CGRect& a, const CGRect& b) {
    const CGFloat left = std::max(a.origin.x, b.origin.x);
    const CGFloat top = std::max(a.origin.y, b.origin.y);
    const CGFloat right = std::min(CGRectGetMaxX(a), CGRectGetMaxX(b));
    const CGFloat bottom = std::min(CGRectGetMaxY(a), CGRectGetMaxY(b));
    if (!(right > left && bottom > top)) return {};
    return CGRectMake(left, top, right - left, bottom - top);
}

CGRect CGRectUnion(const CGRect& a, const CGRect& b) {
    if (CGRectIsEmpty(a)) return CGRectIsEmpty(b) ? CGRect{} : b;
    if (CGRectIsEmpty(b)) return a;
    const CGFloat left = std::min(a.origin.x, b.origin.x);
    const CGFloat top = std::min(a.origin.y, b.origin.y);
    const CGFloat right = std::max(CGRectGetMaxX(a), CGRectGetMaxX(b));
    const CGFloat bottom = std::max(CGRectGetMaxY(a), CGRectGetMaxY(b));
    return CGRectMake(left, top, right - left, bottom - top);
}

std::string NSStringFromCGSize(const CGSize& size) {
    char text[80];
    std::snprintf(text, sizeof text, "{%.17g, %.17g}", static_cast<double>(size.width),
                  static_cast<double>(size.height));
    return text;
}
