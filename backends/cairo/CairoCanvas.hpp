#pragma once

#include "backends/cairo/CairoText.hpp"
#include "backends/cairo/ClipArea.hpp"
#include "backends/cairo/PendingClip.hpp"
#include "backends/cairo/PixelGrid.hpp"
#include "platform/uikit/Canvas.hpp"

#include <cairo.h>

#include <optional>
#include <vector>

/// Paints on a Cairo context, for as long as that lives; leaves the context as it was. The
/// context's matrix scales and translates only, and leads from points to pixels, together with
/// the surface's device scale; `scale` says how many pixels a point gets by both.
///
/// The context is the canvas's own meanwhile: it hears of clips only once something is drawn.
///
/// Clips, bitmaps and text move to whole pixels, so they are crisp and neighbours have no seam.
class CairoCanvas : public Canvas {
 public:
    CairoCanvas(cairo_t* context, CGFloat scale, CairoText& text = CairoText::shared());
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;
    ~CairoCanvas() override;

    CGFloat scale() const override { return CGFloat(grid_.scale()); }
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
    void fillShadow(const CGRect& rect, CGFloat radius, CGFloat blur,
                    const UIColor& color) override;
    void drawBitmap(const UIBitmap& bitmap, const CGRect& source, const CGRect& target,
                    const std::optional<UIColor>& multiply) override;
    void drawText(std::string_view text, const UIFont& font, const UIColor& color,
                  const CGRect& rect, NSTextAlignment alignment) override;

 private:
    struct Saved {
        cairo_matrix_t matrix;
        PendingClip::Area clip;
        std::optional<double> opacity;
    };

    void save(const std::optional<double>& opacity);
    /// Before everything that is drawn.
    void prepare(const UIColor& color);
    bool seesCorners(const CGRect& rect, double radius) const;
    bool looksPlain(const CGRect& rect, double radius) const;
    void fillSidesSeen(const CGRect& outside, const CGRect& inside);
    void fillRing(const CGRect& outside, double outerRadius, const CGRect& inside,
                  double innerRadius);

    cairo_t* context_;
    PixelGrid grid_;
    ClipArea clipped_;  ///< As the context had it.
    PendingClip clip_;
    CairoText& text_;
    std::vector<Saved> saved_;
};
