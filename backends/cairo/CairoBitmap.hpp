#pragma once

#include "backends/cairo/Handles.hpp"
#include "platform/uikit/UIImage.hpp"

#include <vector>

namespace painting {

/// A copy of an image on the device that draws it, such as an X server, so that its pixels are sent
/// there only once. Main thread.
class DeviceCopy {
 public:
    /// The surface to draw the image from on that target: a copy on the target's device, created
    /// now if necessary; the image itself if it is large, or if the target is in this process's
    /// memory or not in pixels. Always pass the same image. Valid until the next call.
    cairo_surface_t* of(cairo_surface_t* image, cairo_surface_t* target);

 private:
    CairoDevice device_;  ///< Referenced, so that no new device gets its address.
    CairoSurface copy_;   ///< None where it could not be made.
};

/// An image surface with 8 bits a channel, premultiplied, and its lately used tinted copies.
class CairoBitmap : public UIBitmap {
 public:
    /// An image surface without an error.
    explicit CairoBitmap(CairoSurface surface);

    PixelSize size() const override;
    int alphaAt(int x, int y) const override;
    cairo_surface_t* surface() const { return plain_.image.get(); }
    /// A copy with every pixel multiplied by the colour; the surface itself for opaque white. Valid
    /// until the next call. nullptr if out of memory.
    cairo_surface_t* tinted(const UIColor& color) const;
    /// The same for drawing the whole bitmap on that target: may be a copy on the target's device.
    cairo_surface_t* tintedFor(cairo_surface_t* target, const UIColor& color) const;

 private:
    struct Look {
        UIColor color;
        CairoSurface image;
        DeviceCopy copy;
    };

    Look* look(const UIColor& color) const;

    mutable Look plain_;
    mutable std::vector<Look> tinted_;
};

}  // namespace painting
