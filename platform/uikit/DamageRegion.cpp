#include "platform/uikit/DamageRegion.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

/// More rectangles cost more to keep apart than to paint together.
constexpr std::size_t mostRectangles = 16;

double areaOf(const CGRect& rect) {
    return static_cast<double>(rect.size.width) * static_cast<double>(rect.size.height);
}

CGRect roundedOut(const CGRect& rect) {
    const CGFloat left = std::floor(rect.origin.x);
    const CGFloat top = std::floor(rect.origin.y);
    return CGRectMake(left, top, std::ceil(CGRectGetMaxX(rect)) - left,
                      std::ceil(CGRectGetMaxY(rect)) - top);
}

/// Takes the rectangles that meet `rect` out of the list; the answer is the rectangle around all.
CGRect absorbed(std::vector<CGRect>& rects, CGRect rect) {
    for (std::size_t i = 0; i < rects.size();) {
        if (!CGRectIntersectsRect(rects[i], rect)) {
            ++i;
            continue;
        }
        rect = CGRectUnion(rects[i], rect);
        rects.erase(rects.begin() + static_cast<std::ptrdiff_t>(i));
        i = 0;  // The larger one may meet others.
    }
    return rect;
}

/// Whether painting the two together costs no more than painting each.
bool belongTogether(const CGRect& one, const CGRect& other) {
    return areaOf(CGRectUnion(one, other)) <= areaOf(one) + areaOf(other);
}

/// The parts of `rect` outside `hole`, which it meets: at most four rectangles.
std::vector<CGRect> partsOutside(const CGRect& rect, const CGRect& hole) {
    const CGRect middle = CGRectIntersection(rect, hole);
    const CGFloat left = rect.origin.x;
    const CGFloat right = CGRectGetMaxX(rect);
    const CGFloat holeTop = middle.origin.y;
    const CGFloat holeBottom = CGRectGetMaxY(middle);
    std::vector<CGRect> parts;
    for (const CGRect& part :
         {CGRectMake(left, rect.origin.y, right - left, holeTop - rect.origin.y),
          CGRectMake(left, holeTop, middle.origin.x - left, middle.size.height),
          CGRectMake(CGRectGetMaxX(middle), holeTop, right - CGRectGetMaxX(middle),
                     middle.size.height),
          CGRectMake(left, holeBottom, right - left, CGRectGetMaxY(rect) - holeBottom)})
        if (!CGRectIsEmpty(part)) parts.push_back(part);
    return parts;
}

}  // namespace

void DamageRegion::add(const CGRect& rect, const CGRect& bounds) {
    const CGRect added = CGRectIntersection(roundedOut(rect), bounds);
    if (!CGRectIsEmpty(added)) include(added);
}

std::vector<CGRect> DamageRegion::take() {
    std::vector<CGRect> taken = rects_;
    rects_.clear();  // Keeps the memory, which the next frame needs again.
    return taken;
}

void DamageRegion::include(const CGRect& rect) {
    const auto other = std::ranges::find_if(
        rects_, [&](const CGRect& each) { return CGRectIntersectsRect(each, rect); });
    if (other == rects_.end()) {
        if (rects_.size() == mostRectangles) return joinWithNearest(rect);
        rects_.push_back(rect);
        return;
    }
    const CGRect met = *other;
    if (belongTogether(met, rect)) {
        rects_.erase(other);
        return include(CGRectUnion(met, rect));
    }
    for (const CGRect& part : partsOutside(rect, met))
        include(part);
}

void DamageRegion::joinWithNearest(CGRect rect) {
    auto nearest = rects_.begin();
    double least = INFINITY;
    for (auto other = rects_.begin(); other != rects_.end(); ++other) {
        const double growth = areaOf(CGRectUnion(*other, rect)) - areaOf(*other);
        if (growth < least) {
            least = growth;
            nearest = other;
        }
    }
    rect = CGRectUnion(*nearest, rect);
    rects_.erase(nearest);
    rect = absorbed(rects_, rect);
    rects_.push_back(rect);
}
