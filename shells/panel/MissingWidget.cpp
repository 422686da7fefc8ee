#include "shells/panel/MissingWidget.hpp"

#include "shells/panel/CentredLabel.hpp"

namespace {

// Points.
constexpr CGSize ownSize = {280, 50};
constexpr CGFloat textMargin = 20;
constexpr CGFloat textHeight = 18;
constexpr CGFloat textSize = 12;
constexpr CGFloat opacity = 0.6;

}  // namespace

MissingWidget::MissingWidget(const std::string& name)
    : view_(std::make_shared<UIView>(CGRect{{0, 0}, ownSize})) {
    auto label = std::make_shared<CentredLabel>(CGRectMake(
        textMargin, (ownSize.height - textHeight) / 2, ownSize.width - 2 * textMargin, textHeight));
    label->setText(name + " could not be loaded");
    label->setFont(UIFont::systemFontOfSize(textSize));
    UIColor color = UILabel::defaultTextColor();
    color.alpha *= opacity;
    label->setTextColor(color);
    view_->addSubview(label);
}

CGSize MissingWidget::preferredSize() {
    return ownSize;
}
