#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "shells/headless/Session.hpp"

namespace headless {
namespace {

constexpr double greatestScale = 8;  // Pixels a point.

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

/// [x, y, width, height]
Json jsonRectangle(const CGRect& rectangle) {
    return Json::array({jsonNumber(rectangle.origin.x), jsonNumber(rectangle.origin.y),
                        jsonNumber(rectangle.size.width), jsonNumber(rectangle.size.height)});
}

/// The view with its subviews, back to front.
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

std::optional<Answer> tree(Session& session, Arguments) {
    session.stage().window().layoutIfNeeded();
    return Answer::result(treeFrom(session.stage().window()));
}

std::optional<Answer> paint(Session& session, Arguments arguments) {
    const auto scale = arguments.size() > 1 ? numberFrom(arguments[1]) : 1.0;
    if (!scale) return std::nullopt;
    if (*scale <= 0 || *scale > greatestScale)
        return Answer::failed("the scale must lie above 0 and not above 8");
    const auto damage =
        session.painter().paint(session.stage().window(), arguments[0].text, *scale);
    if (!damage) return Answer::failed(damage.error());
    Json rectangles = Json::array();
    for (const CGRect& rectangle : *damage)
        rectangles.push_back(jsonRectangle(rectangle));
    return Answer::done().with("damage", std::move(rectangles));
}

}  // namespace

std::span<const Command> reportCommands() {
    static constexpr Command commands[] = {
        {"tree", "", 0, 0, tree},
        {"paint", "FILE [SCALE]", 1, 2, paint},
    };
    return commands;
}

}  // namespace headless
