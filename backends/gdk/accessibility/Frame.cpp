#include "backends/gdk/accessibility/Frame.hpp"

#include <utility>

namespace {
void initComponent(AtkComponentIface* component);
void initWindow(AtkWindowIface* /*window*/) {}
}  // namespace

G_DEFINE_TYPE_WITH_CODE(TarnwickFrame, tarnwick_frame, ATK_TYPE_OBJECT,
                        G_IMPLEMENT_INTERFACE(ATK_TYPE_COMPONENT, initComponent)
                            G_IMPLEMENT_INTERFACE(ATK_TYPE_WINDOW, initWindow))

namespace {

int countChildren(AtkObject* frame) {
    return static_cast<int>(frameState(frame).elements.size());
}

AtkObject* refChild(AtkObject* frame, int index) {
    const auto& elements = frameState(frame).elements;
    if (index < 0 || index >= static_cast<int>(elements.size())) return nullptr;
    return ATK_OBJECT(g_object_ref(elements[static_cast<std::size_t>(index)].get()));
}

AtkStateSet* refStateSet(AtkObject* frame) {
    AtkStateSet* states = ATK_OBJECT_CLASS(tarnwick_frame_parent_class)->ref_state_set(frame);
    for (const AtkStateType state : {ATK_STATE_ENABLED, ATK_STATE_SENSITIVE})
        atk_state_set_add_state(states, state);
    // A window that was closed is kept for the next time, without anything in it.
    if (!frameState(frame).elements.empty())
        for (const AtkStateType state : {ATK_STATE_VISIBLE, ATK_STATE_SHOWING})
            atk_state_set_add_state(states, state);
    if (frameState(frame).activity == WindowActivity::Active)
        atk_state_set_add_state(states, ATK_STATE_ACTIVE);
    return states;
}

void getExtents(AtkComponent* frame, int* x, int* y, int* width, int* height,
                AtkCoordType coordinates) {
    const FrameState& state = frameState(frame);
    ElementState content;
    content.view = state.window.content;
    content.originOnScreen = state.window.originOnScreen;
    elementExtents(content, coordinates, x, y, width, height);
}

void initComponent(AtkComponentIface* component) {
    component->get_extents = getExtents;
}

void finalize(GObject* frame) {
    std::destroy_at(&frameState(frame));
    G_OBJECT_CLASS(tarnwick_frame_parent_class)->finalize(frame);
}

}  // namespace

static void tarnwick_frame_init(TarnwickFrame* frame) {
    std::construct_at(&frame->state);
}

static void tarnwick_frame_class_init(TarnwickFrameClass* frameClass) {
    AtkObjectClass* object = ATK_OBJECT_CLASS(frameClass);
    object->get_n_children = countChildren;
    object->ref_child = refChild;
    object->ref_state_set = refStateSet;
    G_OBJECT_CLASS(frameClass)->finalize = finalize;
}

FrameState& frameState(gpointer frame) {
    return static_cast<TarnwickFrame*>(frame)->state;
}

AtkObjectPtr newFrame(AtkObject* parent, const AccessibleWindow& window) {
    AtkObjectPtr frame(ATK_OBJECT(g_object_new(tarnwick_frame_get_type(), nullptr)));
    atk_object_set_role(frame.get(), ATK_ROLE_FRAME);
    atk_object_set_name(frame.get(), window.title.c_str());
    atk_object_set_parent(frame.get(), parent);
    frameState(frame.get()).window = window;
    return frame;
}

namespace {

void emitActivity(AtkObject* frame) {
    const bool active = frameState(frame).activity == WindowActivity::Active;
    g_signal_emit_by_name(frame, active ? "activate" : "deactivate");
    atk_object_notify_state_change(frame, ATK_STATE_ACTIVE, active ? TRUE : FALSE);
}

}  // namespace

void tellFrameActivity(AtkObject* frame, WindowActivity activity) {
    if (std::exchange(frameState(frame).activity, activity) != activity) emitActivity(frame);
}

void tellFrameOpening(AtkObject* frame) {
    g_signal_emit_by_name(frame, "create");
    if (frameState(frame).activity == WindowActivity::Active) emitActivity(frame);
    // By index and by reference: whoever is told may ask for anything meanwhile.
    for (std::size_t i = 0; i < frameState(frame).elements.size(); ++i) {
        const AtkObjectPtr element(ATK_OBJECT(g_object_ref(frameState(frame).elements[i].get())));
        if (stateOf(element.get()).focused)
            atk_object_notify_state_change(element.get(), ATK_STATE_FOCUSED, TRUE);
        announce(element.get());
    }
}
