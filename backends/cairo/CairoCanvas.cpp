#include "backends/cairo/CairoCanvas.hpp"

#include "backends/cairo/CairoBitmap.hpp"
#include "backends/cairo/CairoShadow.hpp"
#include "backends/cairo/Handles.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace painting {

namespace {

// Differences that arithmetic leaves are not a scale.
constexpr double sameLength = 0.01;  // pixels

constexpr std::size_t usualDepth = 16;  // of views in views

/// A part of a bitmap, in its pixels.
struct BitmapPart {
    int x;
    int y;
    int width;
    int height;
};

using ClipRectangles =
    std::unique_ptr<cairo_rectangle_list_t, ReleaseWith<cairo_rectangle_list_destroy>>;

/// The clip that the context has. A clip that is no set of rectangles counts as the rectangle
/// around it; an unbounded surface gives an infinite one.
std::vector<PixelRect> clipOf(cairo_t* context, const PixelGrid& grid) {
    std::vector<PixelRect> parts;
    const ClipRectangles clip(cairo_copy_clip_rectangle_list(context));
    if (clip->status == CAIRO_STATUS_SUCCESS) {
        for (int i = 0; i < clip->num_rectangles; ++i) {
            const cairo_rectangle_t& rect = clip->rectangles[i];
            parts.push_back(grid.pixels(
                {{CGFloat(rect.x), CGFloat(rect.y)}, {CGFloat(rect.width), CGFloat(rect.height)}}));
        }
        return parts;
    }
    const CGRect area = clippedArea(context);
    parts.push_back({area.origin.x * grid.scale + grid.x, area.origin.y * grid.scale + grid.y,
                     CGRectGetMaxX(area) * grid.scale + grid.x,
                     CGRectGetMaxY(area) * grid.scale + grid.y});
    return parts;
}

double limitedRadius(const CGRect& rect, CGFloat radius) {
    const CGFloat half = std::min(rect.size.width, rect.size.height) / 2;
    return radius > 0 ? std::min(radius, half) : 0;
}

struct Point {
    double x;
    double y;
};

Point between(const Point& one, const Point& other, double part) {
    return {one.x + (other.x - one.x) * part, one.y + (other.y - one.y) * part};
}

// A quarter of a circle in one curve, which keeps within a 3600th of the radius. The library's own
// arcs are the same curves, but found by sines and tangents, and these bring in tables of 150 kB.
void addCorner(cairo_t* context, const Point& from, const Point& corner, const Point& to) {
    constexpr double roundness = 0.5522847498307933;  // 4/3 tan(pi/8)
    const Point first = between(from, corner, roundness);
    const Point second = between(to, corner, roundness);
    cairo_line_to(context, from.x, from.y);
    cairo_curve_to(context, first.x, first.y, second.x, second.y, to.x, to.y);
}

void addRounded(cairo_t* context, const CGRect& rect, double radius) {
    const double left = rect.origin.x;
    const double top = rect.origin.y;
    const double right = CGRectGetMaxX(rect);
    const double bottom = CGRectGetMaxY(rect);
    if (!(radius > 0)) {
        cairo_rectangle(context, left, top, right - left, bottom - top);
        return;
    }
    cairo_new_sub_path(context);
    addCorner(context, {right - radius, top}, {right, top}, {right, top + radius});
    addCorner(context, {right, bottom - radius}, {right, bottom}, {right - radius, bottom});
    addCorner(context, {left + radius, bottom}, {left, bottom}, {left, bottom - radius});
    addCorner(context, {left, top + radius}, {left, top}, {left + radius, top});
    cairo_close_path(context);
}

// Top, bottom, left and right of what lies between the two; none meets another, or a translucent
// colour would be seen twice.
std::array<CGRect, 4> sidesBetween(const CGRect& outside, const CGRect& inside) {
    const CGPoint& corner = outside.origin;
    const CGSize across = {outside.size.width, inside.origin.y - corner.y};
    const CGSize down = {inside.origin.x - corner.x, inside.size.height};
    return {CGRect{corner, across}, CGRect{{corner.x, CGRectGetMaxY(inside)}, across},
            CGRect{{corner.x, inside.origin.y}, down},
            CGRect{{CGRectGetMaxX(inside), inside.origin.y}, down}};
}

// Whole pixels within the bitmap; an empty one where the source lies outside.
BitmapPart pixelsOf(const CGRect& source, PixelSize size) {
    const auto edge = [](double value, int limit) {
        return int(std::lround(std::clamp<double>(value, 0, limit)));
    };
    const int left = edge(source.origin.x, size.width);
    const int top = edge(source.origin.y, size.height);
    return {left, top, edge(CGRectGetMaxX(source), size.width) - left,
            edge(CGRectGetMaxY(source), size.height) - top};
}

bool isWhole(const BitmapPart& pixels, PixelSize size) {
    return pixels.width == size.width && pixels.height == size.height;
}

// A surface of those pixels alone, on the same memory: nothing beside them can bleed in.
CairoSurface partOf(cairo_surface_t* surface, const BitmapPart& pixels) {
    cairo_surface_flush(surface);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface);
    unsigned char* data =
        cairo_image_surface_get_data(surface) + pixels.y * stride + std::ptrdiff_t(pixels.x) * 4;
    return CairoSurface(cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, pixels.width,
                                                            pixels.height, int(stride)));
}

// A bitmap drawn pixel by pixel keeps its size, however its edges would be rounded.
CGRect bitmapTarget(const PixelGrid& grid, const CGRect& target, const BitmapPart& pixels) {
    CGRect aligned = grid.aligned(target);
    const auto isSame = [&](CGFloat points, int length) {
        return std::abs(points * grid.scale - length) < sameLength;
    };
    if (isSame(target.size.width, pixels.width)) {
        aligned.size.width = CGFloat(pixels.width / grid.scale);
    }
    if (isSame(target.size.height, pixels.height)) {
        aligned.size.height = CGFloat(pixels.height / grid.scale);
    }
    return aligned;
}

cairo_filter_t filterFor(const PixelGrid& grid, const CGSize& size, const BitmapPart& pixels) {
    const bool pixelByPixel = std::abs(size.width * grid.scale - pixels.width) < sameLength &&
                              std::abs(size.height * grid.scale - pixels.height) < sameLength;
    return pixelByPixel ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD;
}

}  // namespace

CGRect clippedArea(cairo_t* context) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    return CGRectMake(static_cast<CGFloat>(left), static_cast<CGFloat>(top),
                      static_cast<CGFloat>(right - left), static_cast<CGFloat>(bottom - top));
}

CairoCanvas::CairoCanvas(cairo_t* context, CGFloat scale, CairoText& text)
    : context_(cairo_reference(context)), text_(text) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    unitsPerPixel_ = matrix.xx / scale;
    state_.grid = {scale, matrix.x0 / unitsPerPixel_, matrix.y0 / unitsPerPixel_};
    visible_ = clipOf(context_, state_.grid);
    cairo_save(context_);
    saved_.reserve(usualDepth);
}

CairoCanvas::~CairoCanvas() {
    while (!saved_.empty()) {
        CairoCanvas::restore();
    }
    cairo_restore(context_);
    cairo_destroy(context_);
}

void CairoCanvas::save() {
    saved_.push_back(state_);
    state_.opacity.reset();
}

void CairoCanvas::saveWithOpacity(CGFloat opacity) {
    prepare();
    cairo_push_group(context_);
    cairo_save(context_);
    save();
    state_.opacity = UIColor::clearColor().colorWithAlpha(opacity).clamped().alpha;
}

void CairoCanvas::restore() {
    if (saved_.empty()) return;
    const std::optional<double> opacity = state_.opacity;
    state_ = saved_.back();
    saved_.pop_back();
    if (!opacity) return;
    cairo_restore(context_);
    cairo_pop_group_to_source(context_);
    appliedClip_ = state_.clip;
    cairo_paint_with_alpha(context_, *opacity);
}

void CairoCanvas::translate(CGFloat dx, CGFloat dy) {
    if (!std::isfinite(dx) || !std::isfinite(dy)) return;
    state_.grid.x += dx * state_.grid.scale;
    state_.grid.y += dy * state_.grid.scale;
}

void CairoCanvas::clip(const CGRect& rect) {
    const CGRect area = state_.grid.paintable(rect).value_or(CGRect{});
    const PixelRect pixels = state_.grid.alignedPixels(area);
    const bool changesNothing = std::ranges::all_of(
        visible_, [&](const PixelRect& part) { return contains(pixels, part); });
    if (changesNothing) return;
    state_.clip = state_.clip ? intersection(*state_.clip, pixels) : pixels;
}

bool CairoCanvas::isVisible(const CGRect& rect) const {
    if (CGRectIsEmpty(rect)) return false;
    const PixelRect exact = state_.grid.pixels(rect);
    const PixelRect pixels = state_.clip ? intersection(exact, *state_.clip) : exact;
    return std::ranges::any_of(visible_, [&](const PixelRect& part) { return meet(pixels, part); });
}

/// Whether all that can be painted on lies in the rectangle.
bool CairoCanvas::isWithinClip(const CGRect& rect) const {
    const PixelRect pixels = state_.grid.pixels(rect);
    return std::ranges::all_of(visible_, [&](const PixelRect& part) {
        return contains(pixels, state_.clip ? intersection(part, *state_.clip) : part);
    });
}

bool CairoCanvas::seesCorners(const CGRect& rect, double radius) const {
    const auto side = CGFloat(radius);
    const CGFloat right = CGRectGetMaxX(rect) - side;
    const CGFloat bottom = CGRectGetMaxY(rect) - side;
    return isVisible({rect.origin, {side, side}}) ||
           isVisible(CGRectMake(right, rect.origin.y, side, side)) ||
           isVisible(CGRectMake(rect.origin.x, bottom, side, side)) ||
           isVisible(CGRectMake(right, bottom, side, side));
}

// Round corners are expensive, and most repaints contain none. Edges between pixels are left to
// Cairo, which smooths them.
bool CairoCanvas::looksPlain(const CGRect& rect, double radius) const {
    return radius > 0 && state_.grid.aligned(rect) == rect && !seesCorners(rect, radius);
}

/// Applies clip and origin to the context. Call before drawing anything.
void CairoCanvas::prepare() {
    if (state_.clip != appliedClip_) applyClip();
    cairo_matrix_t matrix;
    const double unitsPerPoint = state_.grid.scale * unitsPerPixel_;
    cairo_matrix_init(&matrix, unitsPerPoint, 0, 0, unitsPerPoint, state_.grid.x * unitsPerPixel_,
                      state_.grid.y * unitsPerPixel_);
    cairo_set_matrix(context_, &matrix);
}

void CairoCanvas::prepare(const UIColor& color) {
    prepare();
    const UIColor shown = color.clamped();
    cairo_set_source_rgba(context_, shown.red, shown.green, shown.blue, shown.alpha);
}

// A context's clip can only become smaller: another one begins at what was saved.
void CairoCanvas::applyClip() {
    cairo_restore(context_);
    cairo_save(context_);
    appliedClip_ = state_.clip;
    if (!state_.clip) return;
    const PixelRect& clip = *state_.clip;
    cairo_identity_matrix(context_);
    cairo_scale(context_, unitsPerPixel_, unitsPerPixel_);
    cairo_new_path(context_);
    cairo_rectangle(context_, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top);
    cairo_clip(context_);
}

void CairoCanvas::fill(const CGRect& rect, const UIColor& color) {
    fillRounded(rect, 0, color);
}

void CairoCanvas::fillRounded(const CGRect& rect, CGFloat radius, const UIColor& color) {
    const std::optional<CGRect> area = state_.grid.paintable(rect);
    if (!area) return;
    prepare(color);
    cairo_new_path(context_);
    const double corner = limitedRadius(*area, radius);
    addRounded(context_, *area, looksPlain(*area, corner) ? 0 : corner);
    cairo_fill(context_);
}

void CairoCanvas::fillPolygons(const std::vector<Polygon>& polygons, const UIColor& color) {
    prepare(color);
    cairo_save(context_);
    cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_new_path(context_);
    for (const Polygon& polygon : polygons) {
        const bool isPaintable = std::ranges::all_of(polygon, [&](const CGPoint& corner) {
            return state_.grid.paintable({corner, {1, 1}}).has_value();
        });
        if (!isPaintable) continue;
        cairo_new_sub_path(context_);  // A closed one leaves a point to go on from.
        for (const CGPoint& corner : polygon) {
            const CGPoint point = state_.grid.paintable({corner, {1, 1}})->origin;
            cairo_line_to(context_, point.x, point.y);
        }
        cairo_close_path(context_);
    }
    cairo_fill(context_);
    cairo_restore(context_);
}

void CairoCanvas::strokeRounded(const CGRect& rect, CGFloat radius, CGFloat width,
                                const UIColor& color) {
    const std::optional<CGRect> area = state_.grid.paintable(rect);
    if (!area || !(width > 0)) return;
    const CGRect inside = CGRectInset(*area, width, width);
    if (CGRectIsEmpty(inside)) return fillRounded(*area, radius, color);
    const double corner = limitedRadius(*area, radius);
    if (isWithinClip(inside) && !seesCorners(*area, corner)) return;
    prepare(color);
    if (looksPlain(*area, corner) && state_.grid.aligned(inside) == inside)
        fillSidesSeen(*area, inside);
    else
        fillRing(*area, corner, inside, std::max(corner - width, 0.0));
}

// A row's repaint touches one side of the panel or none, and rectangles are what Cairo draws
// fastest.
void CairoCanvas::fillSidesSeen(const CGRect& outside, const CGRect& inside) {
    cairo_new_path(context_);
    for (const CGRect& side : sidesBetween(outside, inside))
        if (isVisible(side)) addRounded(context_, side, 0);
    cairo_fill(context_);
}

void CairoCanvas::fillRing(const CGRect& outside, double outerRadius, const CGRect& inside,
                           double innerRadius) {
    cairo_save(context_);
    cairo_new_path(context_);
    addRounded(context_, outside, outerRadius);
    addRounded(context_, inside, innerRadius);
    cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(context_);
    cairo_restore(context_);
}

void CairoCanvas::fillShadow(const CGRect& rect, CGFloat radius, CGFloat blur,
                             const UIColor& color) {
    if (!(blur > 0) || !std::isfinite(blur)) {
        fillRounded(rect, radius, color);
        return;
    }
    const std::optional<CGRect> area = state_.grid.paintable(rect);
    if (!area) return;
    prepare(color);
    fillSoftEdged(context_, state_.grid, *area, CGFloat(limitedRadius(*area, radius)), blur);
}

void CairoCanvas::drawBitmap(const UIBitmap& bitmap, const CGRect& source, const CGRect& target,
                             const std::optional<UIColor>& multiply) {
    const auto* image = dynamic_cast<const CairoBitmap*>(&bitmap);
    if (!image || !state_.grid.paintable(source) || !state_.grid.paintable(target)) return;
    const BitmapPart pixels = pixelsOf(source, image->size());
    const CGRect area = bitmapTarget(state_.grid, target, pixels);
    if (pixels.width < 1 || pixels.height < 1 || CGRectIsEmpty(area)) return;

    const UIColor color = multiply.value_or(UIColor::whiteColor());
    const bool whole = isWhole(pixels, image->size());
    cairo_surface_t* surface =
        whole ? image->tintedFor(cairo_get_target(context_), color) : image->tinted(color);
    if (!surface) return;

    const CairoSurface part = whole ? nullptr : partOf(surface, pixels);
    const CairoPattern pattern(cairo_pattern_create_for_surface(whole ? surface : part.get()));
    cairo_matrix_t matrix;
    cairo_matrix_init_scale(&matrix, pixels.width / area.size.width,
                            pixels.height / area.size.height);
    cairo_matrix_translate(&matrix, -area.origin.x, -area.origin.y);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern.get(), filterFor(state_.grid, area.size, pixels));

    prepare();
    cairo_save(context_);
    cairo_set_source(context_, pattern.get());
    cairo_new_path(context_);
    cairo_rectangle(context_, area.origin.x, area.origin.y, area.size.width, area.size.height);
    cairo_fill(context_);
    cairo_restore(context_);
    if (part) cairo_surface_finish(part.get());
}

void CairoCanvas::drawText(std::string_view text, const UIFont& font, const UIColor& color,
                           const CGRect& rect, NSTextAlignment alignment) {
    const std::optional<CGRect> area = state_.grid.paintable(rect);
    if (!area) return;
    prepare(color);
    text_.draw(context_, state_.grid, text, font, *area, alignment);
}

}  // namespace painting
