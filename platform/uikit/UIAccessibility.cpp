#include "platform/uikit/UIAccessibility.hpp"

#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UILabel.hpp"

NSString accessibilityLabel(const UIView& view) {
    if (const auto* label = dynamic_cast<const UILabel*>(&view)) return label->text();
    if (const auto* button = dynamic_cast<const UIButton*>(&view))
        return button->accessibilityLabel();
    const std::shared_ptr<UIView> superview = view.superview();
    NSString last;
    if (!superview) return last;
    for (const std::shared_ptr<UIView>& sibling : superview->subviews()) {
        if (sibling.get() == &view) return last;
        if (const auto* label = dynamic_cast<const UILabel*>(sibling.get())) last = label->text();
    }
    return std::nullopt;
}

std::vector<std::shared_ptr<UIView>> accessibilityElements(const std::shared_ptr<UIView>& root) {
    std::vector<std::shared_ptr<UIView>> found;
    std::vector<std::shared_ptr<UIView>> waiting;
    if (root) waiting.push_back(root);
    while (!waiting.empty()) {
        const std::shared_ptr<UIView> view = waiting.back();
        waiting.pop_back();
        if (view->isHidden()) continue;
        if (dynamic_cast<UILabel*>(view.get()) || dynamic_cast<UISlider*>(view.get()) ||
            dynamic_cast<UIButton*>(view.get()))
            found.push_back(view);
        const auto below = view->subviews();
        waiting.insert(waiting.end(), below.rbegin(), below.rend());
    }
    return found;
}
