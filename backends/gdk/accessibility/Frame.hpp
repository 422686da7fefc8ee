#pragma once

#include "backends/gdk/accessibility/Element.hpp"

#include <unordered_map>
#include <vector>

/// What a window and its elements are to assistive technology: a flat list, in document order.
struct FrameState {
    AccessibleWindow window;
    WindowActivity activity = WindowActivity::Inactive;
    std::vector<AtkObjectPtr> elements;
    std::unordered_map<const UIView*, AtkObject*> elementOfView;
};

struct TarnwickFrame {
    AtkObject parent;
    FrameState state;
};
struct TarnwickFrameClass {
    AtkObjectClass parent;
};
GType tarnwick_frame_get_type();

/// A window as an object of the accessibility library, below `parent`.
AtkObjectPtr newFrame(AtkObject* parent, const AccessibleWindow& window);

FrameState& frameState(gpointer frame);

/// Brings the list of elements up to date and tells of every change.
void tellFrameChanges(AtkObject* frame);
void tellFrameActivity(AtkObject* frame, WindowActivity activity);
/// Tells that the window has opened, whether it has the keyboard and on what, and its notices.
void tellFrameOpening(AtkObject* frame);
