#pragma once

#include <atk/atk.h>

/// An element for a slider: its value can be read and set, which counts as the user's doing.
GType tarnwick_slider_element_get_type();

#define TARNWICK_IS_SLIDER_ELEMENT(object) \
    (G_TYPE_CHECK_INSTANCE_TYPE((object), tarnwick_slider_element_get_type()))

/// Tells the value if it is another than before.
void tellValue(AtkObject* element);
