#pragma once

#include "backends/cairo/Edges.hpp"

#include <cairo.h>

#include <optional>

/// The rectangle that a context shall be clipped to, within the clip it came with. The context
/// hears of it only when something is drawn: most views draw nothing of their own, and to clip for
/// them would cost the library as much as to fill a rectangle.
///
/// Its owner saves the context before and restores it afterwards; meanwhile nobody else saves it
/// over a call of apply().
class PendingClip {
 public:
    using Area = std::optional<Edges>;  ///< nullopt for the clip that the context came with.

    explicit PendingClip(cairo_t* context) : context_(context) {}

    const Area& area() const { return wanted_; }
    void setArea(const Area& area) { wanted_ = area; }
    /// To what of the area lies in the rectangle too, given in the context's coordinates of now.
    void narrow(const CGRect& rect);

    /// Clips the context. Keeps its matrix, but not its other settings and its path.
    void apply();

    /// What is drawn until endGroup() goes to a surface of its own, which is the context's source
    /// then. By the end the area is again what it was at the beginning.
    void beginGroup();
    void endGroup();

 private:
    void clipTo(const Edges& edges);

    cairo_t* context_;
    Area wanted_;
    Area applied_;
};
