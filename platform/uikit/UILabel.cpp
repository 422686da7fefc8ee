#include "platform/uikit/UILabel.hpp"

#include "platform/uikit/UIWindow.hpp"

#include <algorithm>

namespace {
constexpr CGFloat defaultPointSize = 17;  // Points.

UIColor& sharedTextColor() {
    static UIColor color = UIColor::blackColor();
    return color;
}
}  // namespace

UILabel::UILabel(const CGRect& frame)
    : UIView(frame), font_(UIFont::systemFontOfSize(defaultPointSize)) {
    setUserInteractionEnabled(false);
}

void UILabel::setText(const NSString& text) {
    if (text == text_) return;
    text_ = text;
    setNeedsDisplay();
    structureChanged();
}

void UILabel::setFont(const UIFont& font) {
    if (font == font_) return;
    font_ = font;
    setNeedsDisplay();
}

void UILabel::setTextColor(const std::optional<UIColor>& color) {
    if (!color || color == textColor_) return;
    const bool looksTheSame = *color == textColor();
    textColor_ = color;
    if (!looksTheSame) setNeedsDisplay();
}

UIColor UILabel::defaultTextColor() {
    return sharedTextColor();
}

void UILabel::setDefaultTextColor(const UIColor& color) {
    if (color == sharedTextColor()) return;
    sharedTextColor() = color;
    for (const std::shared_ptr<UIWindow>& window : UIWindow::windows())
        repaintLabels(*window);
}

/// Those without a colour of their own.
void UILabel::repaintLabels(UIView& root) {
    std::vector<std::shared_ptr<UIView>> waiting = root.subviews();
    while (!waiting.empty()) {
        const std::shared_ptr<UIView> view = std::move(waiting.back());
        waiting.pop_back();
        const auto* label = dynamic_cast<const UILabel*>(view.get());
        if (label && !label->textColor_) view->setNeedsDisplay();
        const auto below = view->subviews();
        waiting.insert(waiting.end(), below.begin(), below.end());
    }
}

CGRect UILabel::textRect() const {
    CGRect rect = bounds();
    const std::shared_ptr<UIView> around = superview();
    const CGFloat margin = frame().origin.x;
    if (!around || !(margin > 0)) return rect;
    const CGFloat beyond = CGRectGetMaxX(frame()) - (around->bounds().size.width - margin);
    rect.size.width -= std::max<CGFloat>(beyond, 0);
    return rect;
}

void UILabel::drawRect(Canvas& canvas) {
    if (!text_ || text_->empty() || CGRectIsEmpty(textRect())) return;
    canvas.drawText(*text_, font_, textColor(), textRect(), NSTextAlignment::Natural);
}
