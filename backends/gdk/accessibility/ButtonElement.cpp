#include "backends/gdk/accessibility/ButtonElement.hpp"

#include "backends/gdk/accessibility/Element.hpp"
#include "platform/uikit/UIButton.hpp"

struct TarnwickButtonElement {
    TarnwickElement parent;
};
struct TarnwickButtonElementClass {
    TarnwickElementClass parent;
};

namespace {
void initAction(AtkActionIface* action);
}

G_DEFINE_TYPE_WITH_CODE(TarnwickButtonElement, tarnwick_button_element, tarnwick_element_get_type(),
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_ACTION, initAction))

namespace {

constexpr int actions = 1;

/// Once it has been answered: what it closes may be all that this is about.
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
    return actions;
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

static void tarnwick_button_element_init(TarnwickButtonElement* /*element*/) {}
static void tarnwick_button_element_class_init(TarnwickButtonElementClass* /*elementClass*/) {}
