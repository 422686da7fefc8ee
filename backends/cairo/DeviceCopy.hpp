#pragma once

#include "backends/cairo/Handles.hpp"

/// An image's copy on the device that it is drawn by, such as an X server: its pixels are sent
/// there once, and not at each drawing. Main thread.
class DeviceCopy {
 public:
    /// What to draw the image from on that target: its copy on the target's device, made now unless
    /// it is there; the image itself where it is large, or the target is in this process's memory
    /// or counts in other units than pixels. It is always the same image. Valid until the next
    /// call.
    cairo_surface_t* of(cairo_surface_t* image, cairo_surface_t* target);

 private:
    CairoDevice device_;  ///< Held, so that no other one can be taken for it.
    CairoSurface copy_;   ///< None where it could not be made.
};
