#include "backends/gdk/accessibility/Frame.hpp"
#include "platform/uikit/UIAccessibility.hpp"

#include <algorithm>
#include <unordered_set>

namespace {

using Views = std::vector<std::shared_ptr<UIView>>;

void tellChild(AtkObject* frame, const char* signal, std::size_t index, AtkObject* element) {
    g_signal_emit_by_name(frame, signal, static_cast<guint>(index), element);
}

/// The element of the view, if it still is that view: another may have come to its address.
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
