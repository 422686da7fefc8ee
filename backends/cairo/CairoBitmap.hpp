#pragma once

#include "backends/cairo/Handles.hpp"
#include "platform/uikit/UIImage.hpp"

#include <utility>
#include <vector>

/// An image surface with 8 bits a channel, premultiplied, and its lately used tinted copies.
class CairoBitmap : public UIBitmap {
 public:
    /// An image surface without an error.
    explicit CairoBitmap(CairoSurface surface);

    PixelSize size() const override;
    int alphaAt(int x, int y) const override;
    cairo_surface_t* surface() const { return surface_.get(); }
    /// A copy with every pixel multiplied by the colour; the surface itself for opaque white.
    /// Valid until the next call. nullptr without memory.
    cairo_surface_t* tinted(const UIColor& color) const;

 private:
    CairoSurface surface_;
    mutable std::vector<std::pair<UIColor, CairoSurface>> tinted_;
};
