#include "platform/uikit/UIWindow.hpp"

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

void UIWindow::addDamage(const CGRect& rect) {
    const CGRect added = CGRectIntersection(roundedOut(rect), bounds());
    if (CGRectIsEmpty(added)) return;
    const bool had = !damage_.empty();
    const CGRect merged = absorbed(damage_, added);
    if (damage_.size() < mostRectangles)
        damage_.push_back(merged);
    else
        mergeIntoNearest(merged);
    if (had || !damageHandler_) return;
    const auto handler = damageHandler_;  // It may set another.
    handler();
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
    return std::exchange(damage_, {});
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
