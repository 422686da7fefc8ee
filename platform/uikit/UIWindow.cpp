#include "platform/uikit/UIWindow.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace {

constexpr double scrollPauseSeconds = 0.5;

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
    setTreeRoot(this);
    allWindows().insert(this);
    damage_.add(bounds(), bounds());
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

std::shared_ptr<UIWindow> UIWindow::rootWindow() {
    return strongSelf<UIWindow>();
}

// Painting

void UIWindow::addDamage(const CGRect& rect) {
    const bool had = !damage_.isEmpty();
    damage_.add(rect, bounds());
    if (had || damage_.isEmpty() || !damageHandler_) return;
    const auto handler = damageHandler_;  // It may set another.
    handler();
}

void UIWindow::didResize() {
    if (damage_.isEmpty()) return addDamage(bounds());
    damage_.clear();  // Of another size; the handler was called for it.
    damage_.add(bounds(), bounds());
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
    const auto self = strongSelf<UIWindow>();
    viewsChangedSincePaint_ = false;
    layoutIfNeeded();
    paint(canvas, damage);
}

// Wheel, keys and focus

bool UIWindow::sendScroll(const CGPoint& point, double steps) {
    const auto self = strongSelf<UIWindow>();
    if (!std::isfinite(steps) || steps == 0) return false;
    const double now = NSRunLoop::mainRunLoop().currentTime();
    const auto former = lastScroll_.taker.lock();
    const bool goesOn = former && former->window() == self && former->takesInput() &&
                        lastScroll_.point == point && now - lastScroll_.time < scrollPauseSeconds;
    for (auto view = goesOn ? former : hitTest(point, nullptr); view; view = view->superview()) {
        if (!view->scrolled(convertPointToView(point, view.get()), steps)) continue;
        lastScroll_ = {view, point, now};
        return true;
    }
    return false;
}

bool UIWindow::sendKey(UIKey key) {
    const auto self = strongSelf<UIWindow>();
    setFocusVisible(true);
    if (key == UIKey::Tab) return moveFocus(Direction::Forward);
    if (key == UIKey::BackTab) return moveFocus(Direction::Backward);
    const std::shared_ptr<UIView> view = focusedView();
    return view && view->takesInput() && view->keyPressed(key);
}

void UIWindow::setFocusVisible(bool visible) {
    if (visible == focusVisible_) return;
    focusVisible_ = visible;
    if (const auto view = focusedView()) view->paintBoundsChanged();
}

void UIWindow::setFocusedView(const std::shared_ptr<UIView>& view) {
    const std::shared_ptr<UIView> former = focusedView();
    if (view == former) return;
    if (view && !canFocus(*view)) return;
    focused_ = view;
    if (former) former->paintBoundsChanged();
    if (view) view->paintBoundsChanged();
}

bool UIWindow::canFocus(const UIView& view) const {
    return view.window().get() == this && view.takesInput() && view.canBecomeFocused();
}

void UIWindow::viewWasHidden(const UIView& view) {
    const auto focused = focusedView();
    if (focused && focused->isDescendantOfView(view)) setFocusedView(nullptr);
}

bool UIWindow::moveFocus(Direction direction) {
    const auto views = focusableViews();
    if (views.empty()) return false;
    const auto count = static_cast<std::ptrdiff_t>(views.size());
    const auto current = std::find(views.begin(), views.end(), focusedView()) - views.begin();
    const bool none = current == count;
    std::ptrdiff_t next = 0;
    if (direction == Direction::Forward)
        next = none ? 0 : (current + 1) % count;
    else
        next = none ? count - 1 : (current + count - 1) % count;
    setFocusedView(views[static_cast<std::size_t>(next)]);
    return true;
}

std::vector<std::shared_ptr<UIView>> UIWindow::focusableViews() {
    std::vector<std::shared_ptr<UIView>> found;
    std::vector<std::shared_ptr<UIView>> pending{strongSelf<UIWindow>()};
    while (!pending.empty()) {
        const std::shared_ptr<UIView> view = std::move(pending.back());
        pending.pop_back();
        if (!view || view->isHidden() || !view->isUserInteractionEnabled()) continue;
        if (view->canBecomeFocused()) found.push_back(view);
        const auto subviews = view->subviews();
        pending.insert(pending.end(), subviews.rbegin(), subviews.rend());
    }
    return found;
}
