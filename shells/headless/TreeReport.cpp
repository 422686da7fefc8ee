#include "shells/headless/TreeReport.hpp"

#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"

namespace headless {
namespace {

Json jsonColor(const std::optional<UIColor>& color) {
    if (!color) return nullptr;
    return Json::array({jsonNumber(color->red), jsonNumber(color->green), jsonNumber(color->blue),
                        jsonNumber(color->alpha)});
}

Json jsonImage(const UISlider::Image& image) {
    return image ? Json(image->name()) : Json(nullptr);
}

Json jsonTrackImage(const UISlider::Image& image) {
    if (!image) return nullptr;
    const UIEdgeInsets& insets = image->capInsets();
    return {{"name", image->name()},
            {"capInsets", Json::array({jsonNumber(insets.top), jsonNumber(insets.left),
                                       jsonNumber(insets.bottom), jsonNumber(insets.right)})}};
}

using ImageOfState = UISlider::Image (UISlider::*)(UIControlState) const;

Json byState(const UISlider& slider, ImageOfState image,
             Json (*report)(const UISlider::Image& image)) {
    return {{"normal", report((slider.*image)(UIControlStateNormal))},
            {"highlighted", report((slider.*image)(UIControlStateHighlighted))}};
}

void addLabel(Json& report, const UILabel& label) {
    report["text"] = jsonText(label.text());
    report["textColor"] = jsonColor(label.textColor());
    report["backgroundColor"] = jsonColor(label.backgroundColor());
    report["fontSize"] = jsonNumber(label.font().pointSize);
}

void addSlider(Json& report, const UISlider& slider) {
    report["value"] = jsonNumber(slider.value());
    report["minimumValue"] = jsonNumber(slider.minimumValue());
    report["maximumValue"] = jsonNumber(slider.maximumValue());
    report["continuous"] = slider.isContinuous();
    report["enabled"] = slider.isEnabled() && slider.isValueKnown();
    report["highlighted"] = slider.isHighlighted();
    report["animating"] = slider.isAnimating();
    report["thumbImage"] = byState(slider, &UISlider::thumbImage, jsonImage);
    report["minimumTrackImage"] = byState(slider, &UISlider::minimumTrackImage, jsonTrackImage);
    report["maximumTrackImage"] = byState(slider, &UISlider::maximumTrackImage, jsonTrackImage);
    report["minimumValueImage"] = jsonImage(slider.minimumValueImage());
    report["maximumValueImage"] = jsonImage(slider.maximumValueImage());
    report["thumbTintColor"] = jsonColor(slider.thumbTintColor());
    report["minimumTrackTintColor"] = jsonColor(slider.minimumTrackTintColor());
    report["maximumTrackTintColor"] = jsonColor(slider.maximumTrackTintColor());
}

}  // namespace

Json jsonRectangle(const CGRect& rectangle) {
    return Json::array({jsonNumber(rectangle.origin.x), jsonNumber(rectangle.origin.y),
                        jsonNumber(rectangle.size.width), jsonNumber(rectangle.size.height)});
}

Json treeFrom(const UIView& view) {
    Json report = {{"class", view.className()},
                   {"frame", jsonRectangle(view.frame())},
                   {"tag", view.tag()},
                   {"hidden", view.isHidden()}};
    if (const auto* label = dynamic_cast<const UILabel*>(&view)) addLabel(report, *label);
    if (const auto* slider = dynamic_cast<const UISlider*>(&view)) addSlider(report, *slider);
    Json& subviews = report["subviews"] = Json::array();
    for (const auto& subview : view.subviews())
        subviews.push_back(treeFrom(*subview));
    return report;
}

}  // namespace headless
