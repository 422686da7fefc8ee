#include "platform/uikit/UIView.hpp"

#include <utility>

void UIView::damageRect(const CGRect& rect) {
    auto* const root = treeRoot();
    if (!root) return;
    CGRect seen = rect;
    for (const UIView* view = this; view; view = view->superview_) {
        if (view->clipsToBounds_) seen = CGRectIntersection(seen, view->bounds());
        if (view->hidden_ || CGRectIsEmpty(seen)) return;
        if (view->superview_)
            seen = CGRectOffset(seen, view->frame_.origin.x, view->frame_.origin.y);
    }
    root->addDamage(seen);
}

void UIView::damageExtent() {
    // Large trees are built outside a window, where extents would be found in vain.
    if (treeRoot()) damageRect(extents().own);
}

void UIView::setClipsToBounds(bool clips) {
    if (clips == clipsToBounds_) return;
    damageExtent();
    clipsToBounds_ = clips;
    dropExtents();
    damageExtent();
}

void UIView::setNeedsDisplay() {
    damageRect(paintBounds());
}

void UIView::setNeedsDisplayInRect(const CGRect& rect) {
    damageRect(CGRectIntersection(rect, paintBounds()));
}

void UIView::paintBoundsChanged() {
    dropExtents();
    damageRect(paintedBounds_);
    setNeedsDisplay();
}

const UIView::Extents& UIView::extents() const {
    if (extents_) return *extents_;
    Extents extents{clipsToBounds_ ? bounds() : paintBounds(), {}};
    for (const auto& view : subviews_) {
        if (view->hidden_) continue;
        const CGPoint& origin = view->frame_.origin;
        const CGRect rect = CGRectOffset(view->extents().own, origin.x, origin.y);
        extents.visibleSubviews.push_back({rect, view.get()});
        if (!clipsToBounds_) extents.own = CGRectUnion(extents.own, rect);
    }
    return extents_.emplace(std::move(extents));
}

void UIView::dropExtents() {
    // Where a view's extents are not known, no visible superview's are.
    extents_.reset();
    for (UIView* view = superview_; view && view->extents_; view = view->superview_)
        view->extents_.reset();
}

void UIView::paint(Canvas& canvas, const CGRect& damage) {
    if (hidden_ || !CGRectIntersectsRect(damage, extents().own)) return;
    const std::shared_ptr<UIView> self = strong(this);
    const bool clips = clipsToBounds_;
    if (clips) {
        canvas.save();
        canvas.clip(bounds());
    }
    drawSelf(canvas, damage);
    std::vector<std::shared_ptr<UIView>> touched;
    for (const auto& [rect, view] : extents().visibleSubviews)
        if (CGRectIntersectsRect(damage, rect) && canvas.isVisible(rect))
            touched.push_back(strong(view));
    for (const auto& view : touched) {
        if (view->superview_ != this) continue;
        const CGPoint origin = view->frame_.origin;
        canvas.save();
        canvas.translate(origin.x, origin.y);
        view->paint(canvas, CGRectOffset(damage, -origin.x, -origin.y));
        canvas.restore();
    }
    if (clips) canvas.restore();
}

void UIView::drawSelf(Canvas& canvas, const CGRect& damage) {
    paintedBounds_ = paintBounds();
    if (!CGRectIntersectsRect(damage, paintedBounds_) || !canvas.isVisible(paintedBounds_)) return;
    canvas.save();
    canvas.clip(paintedBounds_);
    if (backgroundColor_ && backgroundColor_->alpha > 0) canvas.fill(bounds(), *backgroundColor_);
    drawRect(canvas);
    canvas.restore();
}

void UIView::setNeedsLayout() {
    if (needsLayout_) return;
    needsLayout_ = true;
    if (superview_) superview_->layoutNeededBelow();
    setNeedsDisplay();  // A layout without a paint would never come.
}

void UIView::layoutNeededBelow() {
    for (UIView* view = this; view && !view->layoutNeededBelow_; view = view->superview_)
        view->layoutNeededBelow_ = true;
}

void UIView::layoutIfNeeded() {
    const std::shared_ptr<UIView> self = strong(this);
    if (needsLayout_) {
        needsLayout_ = false;
        layoutSubviews();
    }
    if (!layoutNeededBelow_) return;
    layoutNeededBelow_ = false;
    std::vector<std::shared_ptr<UIView>> waiting;
    for (const auto& view : subviews_)
        if (view->needsLayout_ || view->layoutNeededBelow_) waiting.push_back(view);
    for (const auto& view : waiting)
        if (view->superview_ == this) view->layoutIfNeeded();
}
