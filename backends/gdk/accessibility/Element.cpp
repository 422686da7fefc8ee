#include "backends/gdk/accessibility/Element.hpp"

#include "backends/gdk/accessibility/ObjectClass.hpp"
#include "platform/foundation/PrintableText.hpp"

#include <cmath>
#include <initializer_list>
#include <memory>
#include <utility>

namespace windowing {

namespace {

bool isOnScreen(const UIView& view) {
    const std::shared_ptr<UIWindow> window = view.window();
    if (!window) return false;
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    return CGRectIntersectsRect(rect, window->bounds());
}

void addStates(AtkStateSet* states, std::initializer_list<AtkStateType> added) {
    for (const AtkStateType state : added)
        atk_state_set_add_state(states, state);
}

AtkStateSet* refStateSet(AtkObject* element) {
    AtkStateSet* states =
        ATK_OBJECT_CLASS(g_type_class_peek(ATK_TYPE_OBJECT))->ref_state_set(element);
    const std::shared_ptr<UIView> view = stateOf(element).view.lock();
    if (!view) {
        atk_state_set_add_state(states, ATK_STATE_DEFUNCT);
        return states;
    }
    addStates(states, {ATK_STATE_VISIBLE});
    if (isOnScreen(*view)) addStates(states, {ATK_STATE_SHOWING});
    const UIAccessibilityRole role = view->accessibilityRole();
    const bool isOperated =
        role == UIAccessibilityRole::Slider || role == UIAccessibilityRole::Button;
    if (view->isAccessibilityEnabled()) addStates(states, {ATK_STATE_ENABLED});
    if (isOperated && view->isAccessibilityEnabled()) addStates(states, {ATK_STATE_SENSITIVE});
    if (role == UIAccessibilityRole::Slider) addStates(states, {ATK_STATE_HORIZONTAL});
    // The keys reach a slider without a known value, too.
    if (view->canBecomeFocused()) addStates(states, {ATK_STATE_FOCUSABLE});
    if (view->isFocused()) addStates(states, {ATK_STATE_FOCUSED});
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

void initClass(AtkObjectClass* element) {
    element->ref_state_set = refStateSet;
    element->get_index_in_parent = indexInParent;
}

}  // namespace

GType elementType() {
    static const GType type = [] {
        const GType element = newObjectClass<ElementState, initClass>("TarnwickElement");
        addInterface<AtkComponentIface, initComponent>(element, ATK_TYPE_COMPONENT);
        return element;
    }();
    return type;
}

ElementState& stateOf(gpointer element) {
    return stateIn<ElementState>(element);
}

namespace {

struct Kind {
    GType type;
    AtkRole role;
};

Kind kindOf(const UIView& view) {
    switch (view.accessibilityRole()) {
        case UIAccessibilityRole::Slider:
            return {sliderElementType(), ATK_ROLE_SLIDER};
        case UIAccessibilityRole::Button:
            return {buttonElementType(), ATK_ROLE_PUSH_BUTTON};
        case UIAccessibilityRole::Notice:
            return {elementType(), ATK_ROLE_NOTIFICATION};
        case UIAccessibilityRole::Label:
        case UIAccessibilityRole::None:
            break;
    }
    return {elementType(), ATK_ROLE_LABEL};
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
    state.sensitive = view->isAccessibilityEnabled();
    tellChanges(element.get());
    return element;
}

void announce(AtkObject* element) {
    if (atk_object_get_role(element) == ATK_ROLE_NOTIFICATION)
        atk_object_notify_state_change(element, ATK_STATE_SHOWING, TRUE);
}

namespace {

void tellName(AtkObject* element, const UIView& view) {
    const std::string name = printableLine(view.accessibilityName().value_or(""));
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
    if (ATK_IS_VALUE(element)) tellValue(element);
    const bool sensitive = view->isAccessibilityEnabled();
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

}  // namespace windowing
