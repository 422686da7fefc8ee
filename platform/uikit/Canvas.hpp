#pragma once

#include "platform/uikit/Geometry.hpp"
#include "platform/uikit/UIColor.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class UIBitmap;

/// A typeface family and a size in points. "" is the desktop's sans-serif.
struct UIFont {
    std::string family;
    CGFloat pointSize = 17;
    bool operator==(const UIFont&) const = default;

    static UIFont systemFontOfSize(CGFloat size) { return {"", size}; }
    UIFont fontWithSize(CGFloat size) const { return {family, size}; }
};

/// The corners in their order; points.
using Polygon = std::vector<CGPoint>;

enum class NSTextAlignment { Natural, Center };

/// The surface that views paint on. Coordinates are points relative to the current origin. A
/// backend provides it for one paint. Main thread.
class Canvas {
 public:
    virtual ~Canvas() = default;

    /// Pixels a point.
    virtual CGFloat scale() const = 0;

    /// Keeps origin and clip, until the restore(). Cheap where nothing is drawn in between, as in
    /// most views.
    virtual void save() = 0;
    virtual void restore() = 0;
    /// Like save(); but what is painted until the restore() is blended as one picture, `opacity`
    /// (0 to 1) of it, so that nothing in it shows through another part of it.
    virtual void saveWithOpacity(CGFloat opacity) = 0;
    virtual void translate(CGFloat dx, CGFloat dy) = 0;
    virtual void clip(const CGRect& rect) = 0;
    /// Whether something drawn there could be seen: what cannot need not be drawn. May say so of
    /// what cannot after all.
    virtual bool isVisible(const CGRect& rect) const = 0;

    virtual void fill(const CGRect& rect, const UIColor& color) = 0;
    /// The radius is limited to half the shorter side, so a large one gives a circle or a pill.
    virtual void fillRounded(const CGRect& rect, CGFloat radius, const UIColor& color) = 0;
    /// A line of `width` points along the inside of the rounded rectangle's edge.
    virtual void strokeRounded(const CGRect& rect, CGFloat radius, CGFloat width,
                               const UIColor& color) = 0;
    /// The inside of closed polygons; what lies within two of them is a hole. A polygon with a
    /// point that is not finite is left out.
    virtual void fillPolygons(const std::vector<Polygon>& polygons, const UIColor& color) = 0;
    /// A rounded rectangle whose edge fades to nothing within `blur` points on both sides.
    virtual void fillShadow(const CGRect& rect, CGFloat radius, CGFloat blur,
                            const UIColor& color) = 0;

    /// Draws the part `source` (pixels of the bitmap) into `target` (points), without bleeding
    /// from outside `source`. With `multiply` every pixel is multiplied by that colour.
    virtual void drawBitmap(const UIBitmap& bitmap, const CGRect& source, const CGRect& target,
                            const std::optional<UIColor>& multiply) = 0;

    /// One line of text, centred vertically in `rect`, ending with an ellipsis where it does not
    /// fit. One of the form "NAME (REMARK): VALUE" has the ellipsis in the middle of the name, and
    /// keeps the rest as long as there is room for it. Any bytes are allowed: what is not UTF-8 is
    /// replaced, control characters are blanks.
    virtual void drawText(std::string_view text, const UIFont& font, const UIColor& color,
                          const CGRect& rect, NSTextAlignment alignment) = 0;
};
