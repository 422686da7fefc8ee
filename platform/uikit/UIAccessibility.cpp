#include "platform/uikit/UIAccessibility.hpp"

#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UILabel.hpp"

#include <algorithm>

namespace {

bool isPercentage(std::string_view text) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return text.size() > 1 && text.back() == '%' &&
           std::all_of(text.begin(), text.end() - 1, isDigit);
}

struct SplitText {
    NSString name;
    NSString value;
};

/// By the form of the text and not by the slider's value, so that the name is the same at each.
SplitText split(const NSString& text) {
    constexpr std::string_view separator = ": ";
    const std::size_t place = text ? text->rfind(separator) : std::string::npos;
    if (place == std::string::npos) return {text, std::nullopt};
    std::string value = text->substr(place + separator.size());
    if (!isPercentage(value) && value != "unknown") return {text, std::nullopt};
    return {text->substr(0, place), std::move(value)};
}

std::vector<std::shared_ptr<UIView>> inReadingOrder(std::vector<std::shared_ptr<UIView>> views) {
    const auto top = [](const auto& view) { return view->frame().origin.y; };
    if (!std::ranges::is_sorted(views, {}, top)) std::ranges::stable_sort(views, {}, top);
    return views;
}

}  // namespace

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

NSString accessibilityName(const UIView& view) {
    const NSString text = accessibilityLabel(view);
    return dynamic_cast<const UISlider*>(&view) ? split(text).name : text;
}

NSString accessibilityValue(const UISlider& slider) {
    return split(accessibilityLabel(slider)).value;
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
        const auto below = inReadingOrder(view->subviews());
        waiting.insert(waiting.end(), below.rbegin(), below.rend());
    }
    return found;
}
