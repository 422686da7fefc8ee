#include "platform/uikit/UIView.hpp"

#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {
constexpr unsigned flexibleWidth = 2;
/// Points. Nothing lies farther out; sums of it stay finite.
constexpr CGFloat farthest = 1e9;

CGFloat usable(CGFloat coordinate) {
    if (!std::isfinite(coordinate)) return 0;
    return std::fmin(std::fmax(coordinate, -farthest), farthest);
}

CGRect usable(const CGRect& rect) {
    return CGRectMake(usable(rect.origin.x), usable(rect.origin.y), usable(rect.size.width),
                      usable(rect.size.height));
}
}  // namespace

UIView::UIView(const CGRect& frame) : frame_(usable(frame)) {}

UIView::~UIView() {
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
}

std::shared_ptr<UIView> UIView::strong(UIView* view) {
    return view ? std::static_pointer_cast<UIView>(view->weak_from_this().lock()) : nullptr;
}

void UIView::setFrame(const CGRect& requested) {
    const CGRect frame = usable(requested);
    if (frame == frame_) return;
    const CGRect old = frame_;
    damageExtent();
    frame_ = frame;
    if (superview_) superview_->dropExtents();
    if (frame.size != old.size) {
        dropExtents();
        didResize();
        setNeedsLayout();
        resizeSubviews(old.size.width);
    }
    damageExtent();
    structureChanged();
}

void UIView::resizeSubviews(CGFloat oldWidth) {
    const CGFloat wider = frame_.size.width - oldWidth;
    if (wider == 0) return;
    for (const auto& subview : subviews_) {
        if (!(subview->autoresizingMask_ & flexibleWidth)) continue;
        CGRect frame = subview->frame_;
        frame.size.width += wider;
        subview->setFrame(frame);
    }
}

void UIView::setHidden(bool hidden) {
    if (hidden == hidden_) return;
    damageExtent();
    hidden_ = hidden;
    if (superview_) superview_->dropExtents();
    damageExtent();
    if (auto* root = treeRoot(); root && hidden) root->viewWasHidden(*this);
    structureChanged();
}

void UIView::setBackgroundColor(const std::optional<UIColor>& color) {
    if (color == backgroundColor_) return;
    backgroundColor_ = color;
    setNeedsDisplay();
}

CGPoint UIView::originInRoot() const {
    CGPoint origin;
    for (const UIView* view = this; view->superview_; view = view->superview_) {
        origin.x += view->frame_.origin.x;
        origin.y += view->frame_.origin.y;
    }
    return origin;
}

CGPoint UIView::convertPointToView(const CGPoint& point, const UIView* view) const {
    const CGPoint from = originInRoot();
    const CGPoint to = view ? view->originInRoot() : CGPoint{};
    return {point.x + from.x - to.x, point.y + from.y - to.y};
}

CGRect UIView::convertRectToView(const CGRect& rect, const UIView* view) const {
    return {convertPointToView(rect.origin, view), rect.size};
}

void UIView::structureChanged() {
    if (auto* root = treeRoot()) root->viewsChanged();
}

// Hierarchy

UIViewTreeRoot* UIView::treeRoot() const {
    const UIView* view = this;
    while (view->superview_)
        view = view->superview_;
    return view->ownTreeRoot_;
}

std::shared_ptr<UIWindow> UIView::window() const {
    UIViewTreeRoot* const root = treeRoot();
    return root ? root->rootWindow() : nullptr;
}

std::shared_ptr<UIView> UIView::superview() const {
    return strong(superview_);
}

std::vector<std::shared_ptr<UIView>> UIView::subviews() const {
    return {subviews_.begin(), subviews_.end()};
}

bool UIView::isDescendantOfView(const UIView& view) const {
    const UIView* above = this;
    while (above && above != &view)
        above = above->superview_;
    return above != nullptr;
}

void UIView::addSubview(const std::shared_ptr<UIView>& added) {
    const std::shared_ptr<UIView> view = added;  // `added` may be what is taken out below.
    if (!view || isDescendantOfView(*view) || view->ownTreeRoot_) return;
    UIViewTreeRoot* const former = view->treeRoot();
    if (view->superview_) {
        view->damageExtent();
        view->structureChanged();
        view->detach();
    }
    view->position_ = subviews_.insert(subviews_.end(), view);
    view->superview_ = this;
    dropTagIndexes();
    dropExtents();
    if (view->needsLayout_ || view->layoutNeededBelow_) layoutNeededBelow();
    view->damageExtent();
    view->structureChanged();
    if (former == treeRoot()) return;
    if (former) former->viewWasRemoved(*view);
    view->movedToWindow();
}

void UIView::removeFromSuperview() {
    if (!superview_) return;
    UIViewTreeRoot* const former = treeRoot();
    damageExtent();
    structureChanged();
    const std::shared_ptr<UIView> self = detach();
    if (!former) return;
    former->viewWasRemoved(*this);
    movedToWindow();
}

std::shared_ptr<UIView> UIView::detach() {
    superview_->dropTagIndexes();
    superview_->dropExtents();
    std::shared_ptr<UIView> self = std::move(*position_);
    superview_->subviews_.erase(position_);
    superview_ = nullptr;
    return self;
}

std::vector<std::shared_ptr<UIView>> UIView::subtree() {
    std::vector<std::shared_ptr<UIView>> views{strong(this)};
    for (std::size_t next = 0; next < views.size(); ++next) {
        // By index and by copy: the vector grows meanwhile.
        const std::shared_ptr<UIView> view = views[next];
        if (view) views.insert(views.end(), view->subviews_.begin(), view->subviews_.end());
    }
    return views;
}

void UIView::movedToWindow() {
    for (const auto& view : subtree())
        if (view) view->didMoveToWindow();
}

void UIView::setTag(NSInteger tag) {
    if (tag == tag_) return;
    tag_ = tag;
    dropTagIndexes();
}

std::shared_ptr<UIView> UIView::viewWithTag(NSInteger tag) {
    if (tag == tag_) return strong(this);
    if (!tagIndex_) tagIndex_ = std::make_unique<TagIndex>(newTagIndex());
    return strong(tagIndex_->find(tag));
}

/// Document order by a stack of its own: trees of other makers' widgets may be deep.
TagIndex UIView::newTagIndex() {
    std::vector<TagIndex::Entry> entries;
    std::vector<UIView*> pending{this};
    while (!pending.empty()) {
        UIView* const view = pending.back();
        pending.pop_back();
        entries.push_back({view->tag_, view});
        for (auto subview = view->subviews_.rbegin(); subview != view->subviews_.rend(); ++subview)
            pending.push_back(subview->get());
    }
    return TagIndex(std::move(entries));
}

void UIView::dropTagIndexes() {
    for (UIView* view = this; view; view = view->superview_)
        view->tagIndex_.reset();
}

// Input and accessibility

bool UIView::pointInside(const CGPoint& point) const {
    return CGRectContainsPoint(bounds(), point);
}

std::shared_ptr<UIView> UIView::hitTest(const CGPoint& point, const UIEvent* event) {
    if (hidden_ || !userInteractionEnabled_ || !pointInside(point)) return nullptr;
    const std::shared_ptr<UIView> self = strong(this);
    const auto views = subviews();
    for (auto view = views.rbegin(); view != views.rend(); ++view) {
        const CGPoint& origin = (*view)->frame_.origin;
        if (auto hit = (*view)->hitTest({point.x - origin.x, point.y - origin.y}, event))
            return hit;
    }
    return self;
}

bool UIView::takesInput() const {
    for (const UIView* view = this; view; view = view->superview_)
        if (view->hidden_ || !view->userInteractionEnabled_) return false;
    return true;
}

bool UIView::scrolled(const CGPoint& point, double steps) {
    (void)point;
    (void)steps;
    return false;
}

bool UIView::keyPressed(UIKey key) {
    (void)key;
    return false;
}

bool UIView::isFocused() const {
    const auto holder = window();
    return holder && holder->focusedView().get() == this;
}

NSString UIView::accessibilityLabel() const {
    if (!superview_) return std::nullopt;
    NSString last;
    for (const auto& sibling : superview_->subviews_) {
        if (sibling.get() == this) break;
        const UIAccessibilityRole role = sibling->accessibilityRole();
        if (role == UIAccessibilityRole::Label || role == UIAccessibilityRole::Notice)
            last = sibling->accessibilityLabel();
    }
    return last;
}

namespace {

std::vector<std::shared_ptr<UIView>> inReadingOrder(std::vector<std::shared_ptr<UIView>> views) {
    const auto top = [](const auto& view) { return view->frame().origin.y; };
    if (!std::ranges::is_sorted(views, {}, top)) std::ranges::stable_sort(views, {}, top);
    return views;
}

}  // namespace

std::vector<std::shared_ptr<UIView>> accessibilityElements(const std::shared_ptr<UIView>& root) {
    std::vector<std::shared_ptr<UIView>> found;
    std::vector<std::shared_ptr<UIView>> waiting;
    if (root) waiting.push_back(root);
    while (!waiting.empty()) {
        const std::shared_ptr<UIView> view = waiting.back();
        waiting.pop_back();
        if (view->isHidden()) continue;
        if (view->accessibilityRole() != UIAccessibilityRole::None) found.push_back(view);
        const auto below = inReadingOrder(view->subviews());
        waiting.insert(waiting.end(), below.rbegin(), below.rend());
    }
    return found;
}
