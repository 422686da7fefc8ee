#pragma once

#include "backends/gdk/AccessibilityBridge.hpp"

#include <atk/atk.h>

#include <optional>

/// An owned reference to an object of the accessibility library.
struct AtkUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using AtkObjectPtr = std::unique_ptr<AtkObject, AtkUnref>;

/// What a label, slider or button is to assistive technology. It may outlive its view: it
/// then is defunct and knows nothing.
struct ElementState {
    std::weak_ptr<UIView> view;
    std::function<CGPoint()> originOnScreen;
    int indexInParent = -1;
    std::optional<float> toldValue;  ///< Of a slider.
    bool sensitive = true;
    bool focused = false;
};

struct TarnwickElement {
    AtkObject parent;
    ElementState state;
};
struct TarnwickElementClass {
    AtkObjectClass parent;
};
GType tarnwick_element_get_type();

/// A label, slider or button as an object of the accessibility library, below `parent`.
AtkObjectPtr newElement(AtkObject* parent, const std::shared_ptr<UIView>& view,
                        const std::function<CGPoint()>& originOnScreen);

ElementState& stateOf(gpointer element);

/// Tells of what has become different since the last time: name, value, whether it is sensitive,
/// focus. A notice that says something else is announced again.
void tellChanges(AtkObject* element);

/// Tells a notice as something that has just appeared, which readers of the screen say aloud.
/// Nothing for any other element.
void announce(AtkObject* element);

/// The view's rectangle in that coordinate system, rounded to whole points.
void elementExtents(const ElementState& state, AtkCoordType coordinates, int* x, int* y, int* width,
                    int* height);
