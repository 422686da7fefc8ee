#pragma once

#include "backends/gdk/AccessibilityBridge.hpp"

#include <atk/atk.h>

#include <optional>

namespace windowing {

/// An owned reference to an object of the accessibility library.
struct AtkUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using AtkObjectPtr = std::unique_ptr<AtkObject, AtkUnref>;

/// The accessibility state of a label, slider or button. It may outlive its view and is then
/// defunct.
struct ElementState {
    std::weak_ptr<UIView> view;
    std::function<CGPoint()> originOnScreen;
    int indexInParent = -1;
    std::optional<float> toldValue;  ///< Of a slider.
    bool sensitive = true;
    bool focused = false;
};

// The classes of elements. A button's one action presses it. A slider's value can be read and set;
// setting it counts as the user's action.
GType elementType();
GType buttonElementType();
GType sliderElementType();

/// A label, slider or button as an object of the accessibility library, below `parent`.
AtkObjectPtr newElement(AtkObject* parent, const std::shared_ptr<UIView>& view,
                        const std::function<CGPoint()>& originOnScreen);

ElementState& stateOf(gpointer element);

/// Announces what has changed: name, value, sensitivity, focus. A notice with a new text is
/// announced as a new one.
void tellChanges(AtkObject* element);

/// Announces a slider's value if it has changed.
void tellValue(AtkObject* slider);

/// Announces a notice as newly shown, which screen readers speak. Has no effect for other elements.
void announce(AtkObject* element);

/// The view's rectangle in that coordinate system, rounded to whole points.
void elementExtents(const ElementState& state, AtkCoordType coordinates, int* x, int* y, int* width,
                    int* height);

}  // namespace windowing
