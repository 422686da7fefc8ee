#include "shells/panel/WidgetStack.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace shell {
namespace {

// Points.
constexpr CGFloat longestSide = 10000;
constexpr CGFloat lineMargin = 20;
// Visible on light and on dark panels.
constexpr UIColor separatorColor = {0.5, 0.5, 0.5, 0.35};

CGFloat usableLength(CGFloat wanted) {
    const bool usable = std::isfinite(wanted) && wanted > 0 && wanted <= longestSide;
    return usable ? std::ceil(wanted) : 0;
}

CGSize usableSize(const CGSize& wanted) {
    return {usableLength(wanted.width), usableLength(wanted.height)};
}

}  // namespace

/// Paints the lines between the widgets, which are its subviews.
class WidgetStack::StackView : public UIView {
 public:
    std::string_view className() const override { return "StackView"; }
    void drawRect(Canvas& canvas) override {
        const CGFloat hairline = 1 / canvas.scale();
        const CGFloat width = std::max<CGFloat>(0, frame().size.width - 2 * lineMargin);
        for (const CGFloat boundary : boundaries_)
            canvas.fill(CGRectMake(lineMargin, boundary, width, hairline), separatorColor);
    }
    void setBoundaries(std::vector<CGFloat> boundaries) {
        if (boundaries_ == boundaries) return;
        boundaries_ = std::move(boundaries);
        setNeedsDisplay();
    }

 private:
    std::vector<CGFloat> boundaries_;
};

WidgetStack::WidgetStack(std::vector<std::unique_ptr<PanelWidget>> widgets)
    : widgets_(std::move(widgets)) {
    for (const auto& widget : widgets_) {
        widget->setSizeHandler([this] {
            if (presenting_ || !view_) return;
            if (stack() && sizeHandler_) sizeHandler_();
        });
    }
}

WidgetStack::~WidgetStack() {
    sizeHandler_ = {};
    dismiss();
}

std::shared_ptr<UIView> WidgetStack::view() {
    if (view_) return view_;
    view_ = std::make_shared<StackView>();
    for (const auto& widget : widgets_)
        view_->addSubview(widget->view());
    stack();
    return view_;
}

CGSize WidgetStack::preferredSize() {
    return view()->frame().size;
}

bool WidgetStack::stack() {
    std::vector<CGSize> sizes;
    CGSize whole;
    for (const auto& widget : widgets_) {
        sizes.push_back(usableSize(widget->preferredSize()));
        whole.width = std::max(whole.width, sizes.back().width);
        whole.height += sizes.back().height;
    }
    std::vector<CGFloat> boundaries;
    CGFloat top = 0;
    for (std::size_t i = 0; i < widgets_.size(); ++i) {
        // Only between two visible widgets.
        if (top > 0 && sizes[i].height > 0) boundaries.push_back(top);
        const CGFloat left = std::floor((whole.width - sizes[i].width) / 2);
        widgets_[i]->view()->setFrame({{left, top}, sizes[i]});
        top += sizes[i].height;
    }
    view_->setBoundaries(std::move(boundaries));
    const CGSize before = view_->frame().size;
    view_->setFrame({view_->frame().origin, whole});
    return before != whole;
}

void WidgetStack::setParentWidth(CGFloat width) {
    for (const auto& widget : widgets_)
        widget->setParentWidth(width);
}

void WidgetStack::present() {
    if (std::exchange(presented_, true)) return;
    const bool wasLoaded = view_ != nullptr;
    view();
    presenting_ = true;
    for (const auto& widget : widgets_)
        widget->present();
    presenting_ = false;
    if ((stack() || !wasLoaded) && sizeHandler_) sizeHandler_();
}

void WidgetStack::dismiss() {
    if (!std::exchange(presented_, false)) return;
    for (const auto& widget : widgets_)
        widget->dismiss();
}

void WidgetStack::readAgain() {
    for (const auto& widget : widgets_)
        widget->readAgain();
}

void WidgetStack::assembleAgain() {
    for (const auto& widget : widgets_)
        widget->assembleAgain();
}

NSString WidgetStack::categoryOf(const UIView& view) const {
    for (const auto& widget : widgets_)
        if (NSString category = widget->categoryOf(view)) return category;
    return std::nullopt;
}

}  // namespace shell
