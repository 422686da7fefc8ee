#include "backends/gdk/accessibility/Element.hpp"

#include "backends/gdk/accessibility/ButtonElement.hpp"
#include "backends/gdk/accessibility/SliderElement.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UIAccessibility.hpp"
#include "platform/uikit/UIButton.hpp"
#include "platform/uikit/UILabel.hpp"

#include <cmath>
#include <memory>
#include <utility>

namespace {

void initComponent(AtkComponentIface* component);

}  // namespace

G_DEFINE_TYPE_WITH_CODE(TarnwickElement, tarnwick_element, ATK_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_COMPONENT, initComponent))

namespace {

bool isOnScreen(const UIView& view) {
    const std::shared_ptr<UIWindow> window = view.window();
    if (!window) return false;
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    return CGRectIntersectsRect(rect, window->bounds());
}

bool isSensitive(const UIView& view) {
    const auto* slider = dynamic_cast<const UISlider*>(&view);
    return !slider || (slider->isEnabled() && slider->isValueKnown());
}

void addSliderStates(AtkStateSet* states, const UISlider& slider) {
    atk_state_set_add_state(states, ATK_STATE_HORIZONTAL);
    if (isSensitive(slider))
        for (const AtkStateType state : {ATK_STATE_ENABLED, ATK_STATE_SENSITIVE})
            atk_state_set_add_state(states, state);
    // The keys get to one without a known value too.
    if (slider.canBecomeFocused()) atk_state_set_add_state(states, ATK_STATE_FOCUSABLE);
    if (slider.isFocused()) atk_state_set_add_state(states, ATK_STATE_FOCUSED);
}

void addButtonStates(AtkStateSet* states, const UIButton& button) {
    if (!button.isEnabled()) return;
    for (const AtkStateType state : {ATK_STATE_ENABLED, ATK_STATE_SENSITIVE})
        atk_state_set_add_state(states, state);
}

AtkStateSet* refStateSet(AtkObject* element) {
    AtkStateSet* states = ATK_OBJECT_CLASS(tarnwick_element_parent_class)->ref_state_set(element);
    const std::shared_ptr<UIView> view = stateOf(element).view.lock();
    if (!view) {
        atk_state_set_add_state(states, ATK_STATE_DEFUNCT);
        return states;
    }
    atk_state_set_add_state(states, ATK_STATE_VISIBLE);
    if (isOnScreen(*view)) atk_state_set_add_state(states, ATK_STATE_SHOWING);
    if (const auto* slider = dynamic_cast<const UISlider*>(view.get()))
        addSliderStates(states, *slider);
    else if (const auto* button = dynamic_cast<const UIButton*>(view.get()))
        addButtonStates(states, *button);
    else
        atk_state_set_add_state(states, ATK_STATE_ENABLED);
    return states;
}

int indexInParent(AtkObject* element) {
    return stateOf(element).indexInParent;
}

void getExtents(AtkComponent* element, int* x, int* y, int* width, int* height,
                AtkCoordType coordinates) {
    elementExtents(stateOf(element), coordinates, x, y, width, height);
}

gboolean grabFocus(AtkComponent* element) {
    const std::shared_ptr<UIView> view = stateOf(element).view.lock();
    const std::shared_ptr<UIWindow> window = view ? view->window() : nullptr;
    if (!window) return FALSE;
    window->setFocusedView(view);
    return view->isFocused() ? TRUE : FALSE;
}

void initComponent(AtkComponentIface* component) {
    component->get_extents = getExtents;
    component->grab_focus = grabFocus;
}

void finalize(GObject* element) {
    std::destroy_at(&stateOf(element));
    G_OBJECT_CLASS(tarnwick_element_parent_class)->finalize(element);
}

}  // namespace

static void tarnwick_element_init(TarnwickElement* element) {
    std::construct_at(&element->state);
}

static void tarnwick_element_class_init(TarnwickElementClass* elementClass) {
    AtkObjectClass* object = ATK_OBJECT_CLASS(elementClass);
    object->ref_state_set = refStateSet;
    object->get_index_in_parent = indexInParent;
    G_OBJECT_CLASS(elementClass)->finalize = finalize;
}

ElementState& stateOf(gpointer element) {
    return static_cast<TarnwickElement*>(element)->state;
}

namespace {

struct Kind {
    GType type;
    AtkRole role;
};

Kind kindOf(const UIView& view) {
    if (dynamic_cast<const UISlider*>(&view))
        return {tarnwick_slider_element_get_type(), ATK_ROLE_SLIDER};
    if (dynamic_cast<const UIButton*>(&view))
        return {tarnwick_button_element_get_type(), ATK_ROLE_PUSH_BUTTON};
    const auto* label = dynamic_cast<const UILabel*>(&view);
    const bool isNotice = label && label->isAnnounced();
    return {tarnwick_element_get_type(), isNotice ? ATK_ROLE_NOTIFICATION : ATK_ROLE_LABEL};
}

}  // namespace

AtkObjectPtr newElement(AtkObject* parent, const std::shared_ptr<UIView>& view,
                        const std::function<CGPoint()>& originOnScreen) {
    const Kind kind = kindOf(*view);
    AtkObjectPtr element(ATK_OBJECT(g_object_new(kind.type, nullptr)));
    atk_object_set_role(element.get(), kind.role);
    atk_object_set_parent(element.get(), parent);
    ElementState& state = stateOf(element.get());
    state.view = view;
    state.originOnScreen = originOnScreen;
    state.sensitive = isSensitive(*view);
    tellChanges(element.get());
    return element;
}

void announce(AtkObject* element) {
    if (atk_object_get_role(element) == ATK_ROLE_NOTIFICATION)
        atk_object_notify_state_change(element, ATK_STATE_SHOWING, TRUE);
}

namespace {

void tellName(AtkObject* element, const UIView& view) {
    const std::string name = printableLine(accessibilityName(view).value_or(""));
    const char* told = atk_object_get_name(element);
    if (told && name == told) return;
    const bool saysSomethingElse = told != nullptr;
    atk_object_set_name(element, name.c_str());
    if (saysSomethingElse) announce(element);
}

void tellState(AtkObject* element, AtkStateType type, bool& told, bool now) {
    if (std::exchange(told, now) != now)
        atk_object_notify_state_change(element, type, now ? TRUE : FALSE);
}

}  // namespace

void tellChanges(AtkObject* element) {
    ElementState& state = stateOf(element);
    const std::shared_ptr<UIView> view = state.view.lock();
    if (!view) return;
    tellName(element, *view);
    if (TARNWICK_IS_SLIDER_ELEMENT(element)) tellValue(element);
    const bool sensitive = isSensitive(*view);
    if (sensitive != state.sensitive)
        atk_object_notify_state_change(element, ATK_STATE_ENABLED, sensitive ? TRUE : FALSE);
    tellState(element, ATK_STATE_SENSITIVE, state.sensitive, sensitive);
    tellState(element, ATK_STATE_FOCUSED, state.focused, view->isFocused());
}

void elementExtents(const ElementState& state, AtkCoordType coordinates, int* x, int* y, int* width,
                    int* height) {
    *x = *y = *width = *height = -1;  // The library's way to say that it is not known.
    const std::shared_ptr<UIView> view = state.view.lock();
    if (!view) return;
    const std::shared_ptr<UIWindow> window = view->window();
    const CGFloat zoom = window ? window->zoom() : 1;
    const CGRect rect = view->convertRectToView(view->bounds(), nullptr);
    const CGPoint origin = coordinates == ATK_XY_SCREEN ? state.originOnScreen() : CGPoint{0, 0};
    *x = static_cast<int>(std::lround(rect.origin.x * zoom + origin.x));
    *y = static_cast<int>(std::lround(rect.origin.y * zoom + origin.y));
    *width = static_cast<int>(std::lround(rect.size.width * zoom));
    *height = static_cast<int>(std::lround(rect.size.height * zoom));
}
