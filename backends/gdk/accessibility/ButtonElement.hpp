#pragma once

#include <atk/atk.h>

/// An element for a button: to press it is its one action.
GType tarnwick_button_element_get_type();
