#pragma once

#include "backends/gdk/accessibility/Element.hpp"

#include <unordered_map>
#include <vector>

namespace windowing {

/// A window and its elements for assistive technology: a flat list, in document order.
struct FrameState {
    AccessibleWindow window;
    WindowActivity activity = WindowActivity::Inactive;
    std::vector<AtkObjectPtr> elements;
    std::unordered_map<const UIView*, AtkObject*> elementOfView;
};

/// A window as an object of the accessibility library, below `parent`.
AtkObjectPtr newFrame(AtkObject* parent, const AccessibleWindow& window);

FrameState& frameState(gpointer frame);

/// Updates the list of elements and announces every change.
void tellFrameChanges(AtkObject* frame);
void tellFrameActivity(AtkObject* frame, WindowActivity activity);
/// Announces that the window has opened, whether it has the keyboard focus and where, and its
/// notices.
void tellFrameOpening(AtkObject* frame);

}  // namespace windowing
