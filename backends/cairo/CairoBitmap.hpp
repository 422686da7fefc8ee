#pragma once

#include "backends/cairo/DeviceCopy.hpp"
#include "backends/cairo/Handles.hpp"
#include "platform/uikit/UIImage.hpp"

#include <vector>

/// An image surface with 8 bits a channel, premultiplied, and its lately used tinted copies.
class CairoBitmap : public UIBitmap {
 public:
    /// An image surface without an error.
    explicit CairoBitmap(CairoSurface surface);

    PixelSize size() const override;
    int alphaAt(int x, int y) const override;
    cairo_surface_t* surface() const { return plain_.image.get(); }
    /// A copy with every pixel multiplied by the colour; the surface itself for opaque white.
    /// Valid until the next call. nullptr without memory.
    cairo_surface_t* tinted(const UIColor& color) const;
    /// The same for one target that it is drawn on whole: it may be a copy on the target's device.
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
