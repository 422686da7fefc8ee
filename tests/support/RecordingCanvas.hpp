#pragma once

#include "platform/uikit/Canvas.hpp"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

/// A canvas that keeps what was painted on it, in the coordinates of the whole canvas.
class RecordingCanvas : public Canvas {
 public:
    struct Operation {
        std::string
            kind;  ///< "fill", "rounded", "polygons", "stroke", "shadow", "bitmap" or "text".
        CGRect rect;
        CGRect clip;
        CGFloat opacity = 1;  ///< By saveWithOpacity().
        UIColor color;
        CGFloat radius = 0;
        CGFloat width = 0;  ///< Of a stroke; of a shadow its blur.
        std::string text;
        UIFont font;
        const UIBitmap* bitmap = nullptr;
        CGRect source;
        std::optional<UIColor> multiply;
    };

    explicit RecordingCanvas(CGFloat scale = 1) : scale_(scale) {}

    const std::vector<Operation>& operations() const { return operations_; }
    std::vector<Operation> ofKind(std::string_view kind) const;
    /// How many save() have had no restore() yet; negative after too many restore().
    int depth() const { return depth_; }

    CGFloat scale() const override { return scale_; }
    void save() override;
    void restore() override;
    void saveWithOpacity(CGFloat opacity) override;
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
    struct State {
        CGPoint origin;
        CGRect clip;
        CGFloat opacity = 1;
    };

    Operation& record(std::string_view kind, const CGRect& rect);

    static constexpr CGFloat far_ = 1e6;
    CGFloat scale_;
    State state_{{}, CGRectMake(-far_, -far_, 2 * far_, 2 * far_)};
    std::vector<State> saved_;
    int depth_ = 0;
    std::vector<Operation> operations_;
};
