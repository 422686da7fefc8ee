#include "backends/cairo/CairoText.hpp"

#include "backends/cairo/CaptionLine.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace painting {

namespace {

constexpr double largestWidth = 1.0e5;   // points; the library counts 1024ths of them in an int
constexpr double largestFont = 1000;     // points
constexpr double narrowCharacters = 16;  // in the space of an em, marks without a width included
constexpr std::size_t mostCharacters = 16384;

// Shaping a megabyte to show twenty words of it would take seconds.
std::size_t charactersWorthShaping(double width, double fontSize) {
    const double fitting = 64 + narrowCharacters * width / fontSize;
    return std::min(mostCharacters, std::size_t(fitting));
}

double usableSize(CGFloat pointSize) {
    return pointSize >= 1 ? std::min<double>(pointSize, largestFont) : 1;
}

PangoFontDescriptionPtr description(const std::string& family, double size) {
    PangoFontDescriptionPtr result(pango_font_description_new());
    pango_font_description_set_family(result.get(), family.c_str());
    pango_font_description_set_absolute_size(result.get(), size * PANGO_SCALE);
    return result;
}

double firstLineX(PangoLayout* layout) {
    const PangoLayoutIterPtr iterator(pango_layout_get_iter(layout));
    PangoRectangle logical;
    pango_layout_iter_get_line_extents(iterator.get(), nullptr, &logical);
    return pango_units_to_double(logical.x);
}

cairo_matrix_t matrixOf(cairo_t* context) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    return matrix;
}

/// What the target itself asks of smoothing and hinting, as a number.
unsigned long targetOptions(cairo_t* context) {
    const CairoFontOptions options(cairo_font_options_create());
    cairo_surface_get_font_options(cairo_get_target(context), options.get());
    return cairo_font_options_hash(options.get());
}

}  // namespace

CairoText::CairoText()
    : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())),
      layout_(pango_layout_new(context_.get())),
      options_(cairo_font_options_create()) {
    pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
    pango_layout_set_ellipsize(layout_.get(), PANGO_ELLIPSIZE_END);
}

CairoText& CairoText::shared() {
    static CairoText text;
    return text;
}

void CairoText::setSansFamily(const std::string& family) {
    sansFamily_ = family;
    face_.reset();
    lines_.clear();
}

void CairoText::setFontOptions(const cairo_font_options_t* options) {
    options_.reset(options ? cairo_font_options_copy(options) : cairo_font_options_create());
    face_.reset();
    lines_.clear();
}

// Widths rounded to whole points keep letters crisp where a point is a pixel; on finer screens
// they would only tear words apart.
void CairoText::useScale(double scale) {
    const CairoFontOptions options(cairo_font_options_copy(options_.get()));
    if (scale > 1) cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context_.get(), options.get());
    pango_context_set_round_glyph_positions(context_.get(), scale > 1 ? FALSE : TRUE);
}

const CairoText::Face& CairoText::useFace(cairo_t* context, const UIFont& font, double scale) {
    if (!face_ || face_->scale != scale) useScale(scale);
    pango_cairo_update_layout(context, layout_.get());
    if (face_ && face_->scale == scale && face_->font == font) return *face_;

    const std::string& family = font.family.empty() ? sansFamily_ : font.family;
    const double size = usableSize(font.pointSize);
    const PangoFontDescriptionPtr wanted = description(family, size);
    pango_layout_set_font_description(layout_.get(), wanted.get());

    cairo_font_extents_t extents{};
    extents.ascent = size;
    const PangoFontPtr loaded(pango_context_load_font(context_.get(), wanted.get()));
    if (PANGO_IS_CAIRO_FONT(loaded.get())) {
        auto* scaled = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(loaded.get()));
        if (scaled) cairo_scaled_font_extents(scaled, &extents);
    }
    return face_.emplace(Face{font, scale, extents.ascent, extents.descent});
}

ShapedLines::Line CairoText::shaped(cairo_t* context, std::string_view text,
                                    const ShapedLines::Style& style) {
    const CaptionLine line =
        captionLine(text, charactersWorthShaping(style.width, usableSize(style.font.pointSize)));
    if (line.text.empty()) return {};
    const Face& face = useFace(context, style.font, style.scale);
    PangoLayout* layout = layout_.get();
    // Natural: lines that are read from right to left are put on the other side by the library.
    pango_layout_set_alignment(
        layout, style.alignment == NSTextAlignment::Center ? PANGO_ALIGN_CENTER : PANGO_ALIGN_LEFT);
    setCaption(layout, line, pango_units_from_double(style.width));
    PangoLayoutLinePtr glyphs(pango_layout_line_ref(pango_layout_get_line(layout, 0)));
    return {std::move(glyphs), firstLineX(layout), face.ascent, face.descent};
}

void CairoText::draw(cairo_t* context, const PixelGrid& grid, std::string_view text,
                     const UIFont& font, const CGRect& rect, NSTextAlignment alignment) {
    const cairo_matrix_t matrix = matrixOf(context);
    const ShapedLines::Style style{.font = font,
                                   .width = std::min<double>(rect.size.width, largestWidth),
                                   .alignment = alignment,
                                   .scale = grid.scale,
                                   .across = matrix.xx,
                                   .down = matrix.yy,
                                   .targetOptions = targetOptions(context)};
    const ShapedLines::Line* line = lines_.find(text, style);
    if (!line) line = &lines_.keep(text, style, shaped(context, text, style));
    if (!line->glyphs) return;

    const double baseline = CGRectGetMidY(rect) + (line->ascent - line->descent) / 2;
    cairo_move_to(context, grid.alignedX(rect.origin.x + line->x), grid.alignedY(baseline));
    pango_cairo_show_layout_line(context, line->glyphs.get());
    cairo_new_path(context);
}

namespace {

constexpr std::size_t mostLines = 64;     // of about a kilobyte each
constexpr std::size_t longestText = 256;  // bytes

}  // namespace

const ShapedLines::Line* ShapedLines::find(std::string_view text, const Style& style) const {
    if (text.size() > longestText) return nullptr;
    const auto found = std::ranges::find_if(
        entries_, [&](const Entry& entry) { return entry.text == text && entry.style == style; });
    return found == entries_.end() ? nullptr : &found->line;
}

const ShapedLines::Line& ShapedLines::keep(std::string_view text, const Style& style, Line line) {
    if (text.size() > longestText) return unkept_ = std::move(line);
    Entry entry{std::string(text), style, std::move(line)};
    if (entries_.size() < mostLines) return entries_.emplace_back(std::move(entry)).line;
    Entry& replaced = entries_[oldest_];
    oldest_ = (oldest_ + 1) % mostLines;
    return (replaced = std::move(entry)).line;
}

void ShapedLines::clear() {
    entries_.clear();
    oldest_ = 0;
}

}  // namespace painting
