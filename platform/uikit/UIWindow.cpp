#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace {
/// More than this many rectangles cost more to keep apart than to paint together.
constexpr std::size_t mostRectangles = 16;

double area(const CGRect& rect) {
    return static_cast<double>(rect.size.width) * static_cast<double>(rect.size.height);
}

CGRect roundedOut(const CGRect& rect) {
    const CGFloat left = std::floor(rect.origin.x);
    const CGFloat top = std::floor(rect.origin.y);
    return CGRectMake(left, top, std::ceil(CGRectGetMaxX(rect)) - left,
                      std::ceil(CGRectGetMaxY(rect)) - top);
}

/// Takes the rectangles that meet `rect` out of the list and grows it around them.
CGRect absorbed(std::vector<CGRect>& rects, CGRect rect) {
    for (std::size_t i = 0; i < rects.size();) {
        if (!CGRectIntersectsRect(rects[i], rect)) {
            ++i;
            continue;
        }
        rect = CGRectUnion(rects[i], rect);
        rects.erase(rects.begin() + static_cast<std::ptrdiff_t>(i));
        i = 0;  // The larger one may meet those that the smaller one did not.
    }
    return rect;
}

/// Whether painting the two together costs no more than painting each.
bool belongTogether(const CGRect& one, const CGRect& other) {
    return area(CGRectUnion(one, other)) <= area(one) + area(other);
}

/// What of `rect` lies outside `hole`, which it meets: at most four rectangles.
std::vector<CGRect> outside(const CGRect& rect, const CGRect& hole) {
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

std::set<UIWindow*>& allWindows() {
    // Never destroyed: a window may end with the program's static objects.
    static auto& windows = *std::make_unique<std::set<UIWindow*>>().release();
    return windows;
}
}  // namespace

std::vector<std::shared_ptr<UIWindow>> UIWindow::windows() {
    std::vector<std::shared_ptr<UIWindow>> found;
    for (UIWindow* window : allWindows())
        if (auto strong = window->strongSelf<UIWindow>()) found.push_back(std::move(strong));
    return found;
}

UIWindow::UIWindow(const CGRect& frame) : UIView(frame) {
    allWindows().insert(this);
    addDamage(bounds());
}

UIWindow::~UIWindow() {
    allWindows().erase(this);
    damageHandler_ = nullptr;
    structureHandler_ = nullptr;
    for (const auto& view : subviews())
        view->removeFromSuperview();
}

void UIWindow::setZoom(CGFloat zoom) {
    if (zoom == zoom_ || !(zoom > 0) || !std::isfinite(zoom)) return;
    zoom_ = zoom;
    setNeedsDisplay();
}

void UIWindow::addDamage(const CGRect& rect) {
    const CGRect added = CGRectIntersection(roundedOut(rect), bounds());
    if (CGRectIsEmpty(added)) return;
    const bool had = !damage_.empty();
    includeDamage(added);
    if (had || !damageHandler_) return;
    const auto handler = damageHandler_;  // It may set another.
    handler();
}

void UIWindow::includeDamage(const CGRect& rect) {
    const auto other = std::ranges::find_if(
        damage_, [&](const CGRect& each) { return CGRectIntersectsRect(each, rect); });
    if (other == damage_.end()) {
        if (damage_.size() == mostRectangles) return mergeIntoNearest(rect);
        damage_.push_back(rect);
        return;
    }
    const CGRect met = *other;
    if (belongTogether(met, rect)) {
        damage_.erase(other);
        return includeDamage(CGRectUnion(met, rect));
    }
    for (const CGRect& part : outside(rect, met))
        includeDamage(part);
}

void UIWindow::mergeIntoNearest(CGRect rect) {
    auto nearest = damage_.begin();
    double least = INFINITY;
    for (auto other = damage_.begin(); other != damage_.end(); ++other) {
        const double growth = area(CGRectUnion(*other, rect)) - area(*other);
        if (growth < least) {
            least = growth;
            nearest = other;
        }
    }
    rect = CGRectUnion(*nearest, rect);
    damage_.erase(nearest);
    rect = absorbed(damage_, rect);
    damage_.push_back(rect);
}

void UIWindow::resized() {
    const bool had = !damage_.empty();
    damage_.clear();
    if (had && !CGRectIsEmpty(bounds()))
        damage_.push_back(bounds());
    else
        addDamage(bounds());
}

std::vector<CGRect> UIWindow::takeDamage() {
    std::vector<CGRect> taken = damage_;
    damage_.clear();  // Its room is wanted again.
    return taken;
}

void UIWindow::setDamageHandler(std::function<void()> handler) {
    damageHandler_ = std::move(handler);
}

void UIWindow::setStructureHandler(std::function<void()> handler) {
    structureHandler_ = std::move(handler);
}

void UIWindow::viewsChanged() {
    if (viewsChangedSincePaint_ || !structureHandler_) return;
    viewsChangedSincePaint_ = true;
    const auto handler = structureHandler_;
    handler();
}

void UIWindow::layoutAndPaint(Canvas& canvas, const CGRect& damage) {
    const auto self = strong(this);
    viewsChangedSincePaint_ = false;
    layoutIfNeeded();
    paint(canvas, damage);
}
