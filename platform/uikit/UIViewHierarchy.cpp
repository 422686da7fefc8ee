#include "platform/uikit/UIView.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cstddef>

UIView* UIView::root() {
    UIView* view = this;
    while (view->superview_)
        view = view->superview_;
    return view;
}

const UIView* UIView::root() const {
    const UIView* view = this;
    while (view->superview_)
        view = view->superview_;
    return view;
}

UIWindow* UIView::rootWindow() {
    return root()->asWindow();
}

std::shared_ptr<UIWindow> UIView::window() const {
    // The tree is not changed: a window is handed out for use like any other strong reference.
    auto* window = const_cast<UIView*>(this)->rootWindow();
    return std::static_pointer_cast<UIWindow>(strong(window));
}

std::shared_ptr<UIView> UIView::superview() const {
    return strong(superview_);
}

std::vector<std::shared_ptr<UIView>> UIView::subviews() const {
    return {subviews_.begin(), subviews_.end()};
}

bool UIView::isDescendantOf(const UIView* view) const {
    const UIView* above = this;
    while (above && above != view)
        above = above->superview_;
    return above != nullptr;
}

void UIView::addSubview(const std::shared_ptr<UIView>& added) {
    const std::shared_ptr<UIView> view = added;  // `added` may be what is taken out below.
    if (!view || isDescendantOf(view.get()) || view->asWindow()) return;
    UIWindow* const former = view->rootWindow();
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
    if (former == rootWindow()) return;
    if (former) former->forget(*view);
    view->movedToWindow();
}

void UIView::removeFromSuperview() {
    if (!superview_) return;
    UIWindow* const former = rootWindow();
    damageExtent();
    structureChanged();
    const std::shared_ptr<UIView> self = detach();
    if (!former) return;
    former->forget(*this);
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
    if (!tagIndex_) {
        if (const auto leaf = amongFewLeaves(tag)) return *leaf;
        tagIndex_ = std::make_unique<TagIndex>(buildTagIndex());
    }
    const auto found = std::ranges::lower_bound(*tagIndex_, tag, {}, &TagEntry::tag);
    if (found == tagIndex_->end() || found->tag != tag) return nullptr;
    fetchAhead(found);
    return strong(found->view);
}

/// Few are walked through sooner than an index of them is made. nullopt when the search goes on.
std::optional<std::shared_ptr<UIView>> UIView::amongFewLeaves(NSInteger tag) const {
    constexpr std::size_t few = 4;
    if (subviews_.size() > few) return std::nullopt;
    for (const std::shared_ptr<UIView>& view : subviews_) {
        if (view->tag_ == tag) return view;
        if (!view->subviews_.empty()) return std::nullopt;
    }
    return nullptr;
}

/// Who looks for one tag is likely to look for the next ones soon, as when a list is read from its
/// top. Each view of a long list is a wait for the memory, unless it begins before.
void UIView::fetchAhead(TagIndex::const_iterator found) const {
    constexpr std::ptrdiff_t viewsAhead = 8;
    constexpr std::ptrdiff_t lineBytes = 64;
    // With the count of its owners, which lies before it.
    constexpr std::ptrdiff_t begin = -2 * sizeof(void*);
    constexpr std::ptrdiff_t end = begin + 10 * lineBytes;
    if (tagIndex_->end() - found <= viewsAhead) return;
    const auto* view = reinterpret_cast<const std::byte*>((found + viewsAhead)->view);
    for (std::ptrdiff_t byte = begin; byte < end; byte += lineBytes)
        __builtin_prefetch(view + byte);
}

/// Document order by a stack of its own: trees from outside may be deep.
UIView::TagIndex UIView::buildTagIndex() {
    TagIndex index;
    std::vector<UIView*> pending{this};
    while (!pending.empty()) {
        UIView* const view = pending.back();
        pending.pop_back();
        index.push_back({view->tag_, view});
        for (auto subview = view->subviews_.rbegin(); subview != view->subviews_.rend(); ++subview)
            pending.push_back(subview->get());
    }
    std::ranges::stable_sort(index, {}, &TagEntry::tag);
    const auto isRepeated = [](const TagEntry& one, const TagEntry& next) {
        return one.tag == next.tag;
    };
    index.erase(std::unique(index.begin(), index.end(), isRepeated), index.end());
    index.shrink_to_fit();
    return index;
}

void UIView::dropTagIndexes() {
    for (UIView* view = this; view; view = view->superview_)
        view->tagIndex_.reset();
}
