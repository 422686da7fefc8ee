#include "backends/gdk/accessibility/SliderElement.hpp"

#include "backends/gdk/accessibility/Element.hpp"
#include "platform/uikit/UISlider.hpp"

#include <cmath>

struct TarnwickSliderElement {
    TarnwickElement parent;
};
struct TarnwickSliderElementClass {
    TarnwickElementClass parent;
};

namespace {
void initValue(AtkValueIface* value);
}

G_DEFINE_TYPE_WITH_CODE(TarnwickSliderElement, tarnwick_slider_element, tarnwick_element_get_type(),
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_VALUE, initValue))

namespace {

constexpr double stepsInRange = 100;  // As the wheel and the arrow keys move it.

std::shared_ptr<UISlider> sliderOf(gpointer element) {
    return std::dynamic_pointer_cast<UISlider>(stateOf(element).view.lock());
}

void getValueAndText(AtkValue* element, double* value, char** text) {
    const std::shared_ptr<UISlider> slider = sliderOf(element);
    if (value) *value = slider ? double{slider->value()} : 0;
    if (text) *text = nullptr;  // The bridge would tell it to nobody, and not free it.
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

static void tarnwick_slider_element_init(TarnwickSliderElement* /*element*/) {}
static void tarnwick_slider_element_class_init(TarnwickSliderElementClass* /*elementClass*/) {}

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
