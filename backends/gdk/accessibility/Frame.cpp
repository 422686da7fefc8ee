#include "backends/gdk/accessibility/Frame.hpp"

#include "backends/gdk/accessibility/ObjectClass.hpp"
#include "platform/uikit/UIView.hpp"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace windowing {

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
    AtkStateSet* states =
        ATK_OBJECT_CLASS(g_type_class_peek(ATK_TYPE_OBJECT))->ref_state_set(frame);
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

void initWindow(AtkWindowIface* /*window*/) {}

void initClass(AtkObjectClass* frame) {
    frame->get_n_children = countChildren;
    frame->ref_child = refChild;
    frame->ref_state_set = refStateSet;
}

GType frameType() {
    static const GType type = [] {
        const GType frame = newObjectClass<FrameState, initClass>("TarnwickFrame");
        addInterface<AtkComponentIface, initComponent>(frame, ATK_TYPE_COMPONENT);
        addInterface<AtkWindowIface, initWindow>(frame, ATK_TYPE_WINDOW);
        return frame;
    }();
    return type;
}

}  // namespace

FrameState& frameState(gpointer frame) {
    return stateIn<FrameState>(frame);
}

AtkObjectPtr newFrame(AtkObject* parent, const AccessibleWindow& window) {
    AtkObjectPtr frame(ATK_OBJECT(g_object_new(frameType(), nullptr)));
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

namespace {

using Views = std::vector<std::shared_ptr<UIView>>;

void tellChild(AtkObject* frame, const char* signal, std::size_t index, AtkObject* element) {
    g_signal_emit_by_name(frame, signal, static_cast<guint>(index), element);
}

/// The element of the view, unless another view has taken its address.
AtkObject* knownElement(const FrameState& state, const std::shared_ptr<UIView>& view) {
    const auto found = state.elementOfView.find(view.get());
    const bool known =
        found != state.elementOfView.end() && stateOf(found->second).view.lock() == view;
    return known ? found->second : nullptr;
}

bool isUpToDate(const FrameState& state, const Views& views) {
    return std::ranges::equal(state.elements, views, [](const auto& element, const auto& view) {
        return stateOf(element.get()).view.lock() == view;
    });
}

void dropElements(AtkObject* frame, const Views& views) {
    FrameState& state = frameState(frame);
    const std::unordered_set<std::shared_ptr<UIView>> staying(views.begin(), views.end());
    for (std::size_t i = state.elements.size(); i-- > 0;) {
        const std::shared_ptr<UIView> view = stateOf(state.elements[i].get()).view.lock();
        if (view && staying.contains(view)) continue;
        const AtkObjectPtr gone = std::move(state.elements[i]);
        state.elements.erase(state.elements.begin() + static_cast<std::ptrdiff_t>(i));
        stateOf(gone.get()).view.reset();
        atk_object_notify_state_change(gone.get(), ATK_STATE_DEFUNCT, TRUE);
        tellChild(frame, "children-changed::remove", i, gone.get());
    }
}

void arrangeElements(AtkObject* frame, const Views& views) {
    dropElements(frame, views);
    FrameState& state = frameState(frame);
    std::vector<AtkObjectPtr> arranged;
    std::vector<std::size_t> added;
    for (const std::shared_ptr<UIView>& view : views) {
        if (AtkObject* known = knownElement(state, view)) {
            arranged.emplace_back(ATK_OBJECT(g_object_ref(known)));
        } else {
            added.push_back(arranged.size());
            // Not related to its caption: a reader would say that in the name's place, and so
            // each volume twice.
            arranged.push_back(newElement(frame, view, state.window.originOnScreen));
        }
        stateOf(arranged.back().get()).indexInParent = static_cast<int>(arranged.size()) - 1;
    }
    state.elements = std::move(arranged);
    state.elementOfView.clear();
    for (std::size_t i = 0; i < views.size(); ++i)
        state.elementOfView[views[i].get()] = state.elements[i].get();
    for (const std::size_t index : added) {
        tellChild(frame, "children-changed::add", index, state.elements[index].get());
        announce(state.elements[index].get());
    }
}

}  // namespace

void tellFrameChanges(AtkObject* frame) {
    const Views views = accessibilityElements(frameState(frame).window.content);
    if (!isUpToDate(frameState(frame), views)) arrangeElements(frame, views);
    // By index and by reference: whoever is told may ask for anything meanwhile.
    for (std::size_t i = 0; i < frameState(frame).elements.size(); ++i) {
        const AtkObjectPtr element(ATK_OBJECT(g_object_ref(frameState(frame).elements[i].get())));
        tellChanges(element.get());
    }
}

}  // namespace windowing
