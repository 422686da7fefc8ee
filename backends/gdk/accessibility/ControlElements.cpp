#include "backends/gdk/accessibility/Element.hpp"
#include "backends/gdk/accessibility/ObjectClass.hpp"
#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UISlider.hpp"

#include <cmath>

namespace windowing {

// Buttons -----------------------------------------------------------------------------------------

namespace {

/// Runs after the answer, because the press may destroy everything here.
gboolean press(AtkAction* element, int index) {
    const auto button = std::dynamic_pointer_cast<UIButton>(stateOf(element).view.lock());
    if (index != 0 || !button || !button->isEnabled()) return FALSE;
    using Button = std::weak_ptr<UIButton>;
    const auto later = +[](gpointer held) -> gboolean {
        if (const auto pressed = static_cast<const Button*>(held)->lock()) pressed->press();
        return G_SOURCE_REMOVE;
    };
    g_idle_add_full(G_PRIORITY_DEFAULT, later, std::make_unique<Button>(button).release(),
                    [](gpointer held) { delete static_cast<const Button*>(held); });
    return TRUE;
}

int countActions(AtkAction* /*element*/) {
    return 1;
}

const char* nameOf(AtkAction* /*element*/, int index) {
    return index == 0 ? "press" : nullptr;
}

void initAction(AtkActionIface* action) {
    action->do_action = press;
    action->get_n_actions = countActions;
    action->get_name = nameOf;
}

}  // namespace

GType buttonElementType() {
    static const GType type = [] {
        const GType button = newSubclass(elementType(), "TarnwickButtonElement");
        addInterface<AtkActionIface, initAction>(button, ATK_TYPE_ACTION);
        return button;
    }();
    return type;
}

// Sliders -----------------------------------------------------------------------------------------

namespace {

constexpr double stepsInRange = 100;  // As the wheel and the arrow keys move it.

std::shared_ptr<UISlider> sliderOf(gpointer element) {
    return std::dynamic_pointer_cast<UISlider>(stateOf(element).view.lock());
}

void getValueAndText(AtkValue* element, double* value, char** text) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    if (value) *value = slider ? double{slider->value()} : 0;
    if (text) *text = nullptr;  // The bridge would neither use nor free it.
}

AtkRange* getRange(AtkValue* element) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    return slider ? atk_range_new(double{slider->minimumValue()}, double{slider->maximumValue()},
                                  nullptr)
                  : nullptr;
}

double getIncrement(AtkValue* element) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    if (!slider) return 0;
    return (double{slider->maximumValue()} - double{slider->minimumValue()}) / stepsInRange;
}

/// As a screen reader would read it out. The server's answer to a change differs from it by less.
bool soundsTheSame(AtkValue* element, float one, float other) {
    const double step = getIncrement(element);
    return one == other || std::lround(double{one} / step) == std::lround(double{other} / step);
}

void setValue(AtkValue* element, double value) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    if (!slider || !slider->isEnabled() || !std::isfinite(value)) return;
    slider->setValueFromUser(static_cast<float>(value));
}

void initValue(AtkValueIface* value) {
    value->get_value_and_text = getValueAndText;
    value->get_range = getRange;
    value->get_increment = getIncrement;
    value->set_value = setValue;
}

}  // namespace

GType sliderElementType() {
    static const GType type = [] {
        const GType slider = newSubclass(elementType(), "TarnwickSliderElement");
        addInterface<AtkValueIface, initValue>(slider, ATK_TYPE_VALUE);
        return slider;
    }();
    return type;
}

void tellValue(AtkObject* element) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    if (!slider) return;
    std::optional<float>& told = stateOf(element).toldValue;
    if (told && soundsTheSame(ATK_VALUE(element), *told, slider->value())) return;
    const bool isNews = told.has_value();
    told = slider->value();
    if (!isNews) return;
    g_signal_emit_by_name(element, "value-changed", double{*told}, nullptr);
    g_object_notify(G_OBJECT(element), "accessible-value");
}

}  // namespace windowing
