#include "tests/support/RecordingCanvas.hpp"

#include <algorithm>
#include <iterator>

std::vector<RecordingCanvas::Operation> RecordingCanvas::ofKind(std::string_view kind) const {
    std::vector<Operation> found;
    std::copy_if(operations_.begin(), operations_.end(), std::back_inserter(found),
                 [kind](const Operation& operation) { return operation.kind == kind; });
    return found;
}

RecordingCanvas::Operation& RecordingCanvas::record(std::string_view kind, const CGRect& rect) {
    Operation& operation = operations_.emplace_back();
    operation.kind = kind;
    operation.rect = CGRectOffset(rect, state_.origin.x, state_.origin.y);
    operation.clip = state_.clip;
    operation.opacity = state_.opacity;
    return operation;
}

void RecordingCanvas::save() {
    ++depth_;
    saved_.push_back(state_);
}

void RecordingCanvas::restore() {
    --depth_;
    if (saved_.empty()) return;
    state_ = saved_.back();
    saved_.pop_back();
}

void RecordingCanvas::saveWithOpacity(CGFloat opacity) {
    save();
    state_.opacity *= opacity;
}

void RecordingCanvas::translate(CGFloat dx, CGFloat dy) {
    state_.origin = {state_.origin.x + dx, state_.origin.y + dy};
}

void RecordingCanvas::clip(const CGRect& rect) {
    state_.clip =
        CGRectIntersection(state_.clip, CGRectOffset(rect, state_.origin.x, state_.origin.y));
}

bool RecordingCanvas::isVisible(const CGRect& rect) const {
    return CGRectIntersectsRect(state_.clip, CGRectOffset(rect, state_.origin.x, state_.origin.y));
}

void RecordingCanvas::fill(const CGRect& rect, const UIColor& color) {
    record("fill", rect).color = color;
}

void RecordingCanvas::fillRounded(const CGRect& rect, CGFloat radius, const UIColor& color) {
    Operation& operation = record("rounded", rect);
    operation.radius = radius;
    operation.color = color;
}

void RecordingCanvas::strokeRounded(const CGRect& rect, CGFloat radius, CGFloat width,
                                    const UIColor& color) {
    Operation& operation = record("stroke", rect);
    operation.radius = radius;
    operation.width = width;
    operation.color = color;
}

void RecordingCanvas::fillPolygons(const std::vector<Polygon>& /*polygons*/, const UIColor& color) {
    record("polygons", {}).color = color;
}

void RecordingCanvas::fillShadow(const CGRect& rect, CGFloat radius, CGFloat blur,
                                 const UIColor& color) {
    Operation& operation = record("shadow", rect);
    operation.radius = radius;
    operation.width = blur;
    operation.color = color;
}

void RecordingCanvas::drawBitmap(const UIBitmap& bitmap, const CGRect& source, const CGRect& target,
                                 const std::optional<UIColor>& multiply) {
    Operation& operation = record("bitmap", target);
    operation.bitmap = &bitmap;
    operation.source = source;
    operation.multiply = multiply;
}

void RecordingCanvas::drawText(std::string_view text, const UIFont& font, const UIColor& color,
                               const CGRect& rect, NSTextAlignment alignment) {
    (void)alignment;
    Operation& operation = record("text", rect);
    operation.text = text;
    operation.font = font;
    operation.color = color;
}
