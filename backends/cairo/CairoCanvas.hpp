#pragma once

#include "backends/cairo/CairoText.hpp"
#include "backends/cairo/PaintState.hpp"
#include "platform/uikit/Canvas.hpp"

#include <cairo.h>

#include <optional>
#include <vector>

namespace painting {

/// What can be painted in the context's clip, in its units.
CGRect clippedArea(cairo_t* context);

/// Paints on a Cairo context.
///
/// Make one for a paint, on the context that a surface or a toolkit hands out, and let it go before
/// the context is used for anything else:
///
///     cairo_scale(context, scale, scale);
///     CairoCanvas canvas(context, scale);
///     window.layoutAndPaint(canvas, window.bounds());
///
/// The context's matrix scales (alike in both directions) and translates only. It leads from points
/// to pixels together with the surface's device scale; `scale` is the pixels that a point gets by
/// both.
///
/// The canvas keeps origin and clip itself, in device pixels, and tells the context of them with
/// the next thing drawn: most views draw nothing of their own, and a clip costs Cairo as much as a
/// filled rectangle. The destructor leaves the context as it was.
///
/// Clips, bitmaps and text move to whole pixels, so they are crisp and neighbours have no seam.
class CairoCanvas : public Canvas {
 public:
    CairoCanvas(cairo_t* context, CGFloat scale, CairoText& text = CairoText::shared());
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;
    ~CairoCanvas() override;

    CGFloat scale() const override { return CGFloat(state_.grid.scale); }
    void save() override;
    void saveWithOpacity(CGFloat opacity) override;
    /// Ignored without a save().
    void restore() override;
    void translate(CGFloat dx, CGFloat dy) override;
    void clip(const CGRect& rect) override;
    bool isVisible(const CGRect& rect) const override;
    void fill(const CGRect& rect, const UIColor& color) override;
    void fillRounded(const CGRect& rect, CGFloat radius, const UIColor& color) override;
    void strokeRounded(const CGRect& rect, CGFloat radius, CGFloat width,
                       const UIColor& color) override;
    void fillPolygons(const std::vector<Polygon>& polygons, const UIColor& color) override;
    void fillShadow(const CGRect& rect, CGFloat radius, CGFloat blur,
                    const UIColor& color) override;
    void drawBitmap(const UIBitmap& bitmap, const CGRect& source, const CGRect& target,
                    const std::optional<UIColor>& multiply) override;
    void drawText(std::string_view text, const UIFont& font, const UIColor& color,
                  const CGRect& rect, NSTextAlignment alignment) override;

 private:
    // What is drawn next
    void prepare();
    void prepare(const UIColor& color);
    void applyClip();

    // What of it can be seen
    bool isWithinClip(const CGRect& rect) const;
    bool seesCorners(const CGRect& rect, double radius) const;
    bool looksPlain(const CGRect& rect, double radius) const;

    // Parts of a stroke
    void fillSidesSeen(const CGRect& outside, const CGRect& inside);
    void fillRing(const CGRect& outside, double outerRadius, const CGRect& inside,
                  double innerRadius);

    cairo_t* context_;
    CairoText& text_;
    double unitsPerPixel_;            ///< Of those that the context's matrix leads to.
    std::vector<PixelRect> visible_;  ///< The clip that the context came with.
    PaintState state_;
    std::vector<PaintState> saved_;
    std::optional<PixelRect> appliedClip_;  ///< The state's clip that the context knows of.
};

}  // namespace painting
