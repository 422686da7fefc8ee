#include "backends/cairo/ShapedLines.hpp"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr std::size_t mostLines = 64;  // About a kilobyte each.
constexpr std::size_t longestText = 256;

std::size_t hashOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

bool scalesAs(const cairo_matrix_t& one, const cairo_matrix_t& other) {
    return one.xx == other.xx && one.yy == other.yy && one.xy == other.xy && one.yx == other.yx;
}

}  // namespace

bool ShapedLines::isFor(const Entry& entry, const Key& key) {
    return entry.text == key.text && entry.font == key.font && entry.width == key.width &&
           entry.alignment == key.alignment && entry.scale == key.scale &&
           scalesAs(entry.matrix, key.matrix) && entry.targetOptions == key.targetOptions;
}

const ShapedLines::Line* ShapedLines::find(const Key& key) const {
    if (key.text.size() > longestText) return nullptr;
    const std::size_t hash = hashOf(key.text);
    for (const Entry& entry : entries_)
        if (entry.hash == hash && isFor(entry, key)) return &entry.line;
    return nullptr;
}

const ShapedLines::Line& ShapedLines::keep(const Key& key, Line line) {
    if (key.text.size() > longestText) return unkept_ = std::move(line);
    Entry entry{hashOf(key.text), std::string(key.text), key.font,
                key.width,        key.alignment,         key.scale,
                key.matrix,       key.targetOptions,     std::move(line)};
    if (entries_.size() < mostLines) return entries_.emplace_back(std::move(entry)).line;
    Entry& replaced = entries_[oldest_];
    oldest_ = (oldest_ + 1) % mostLines;
    return (replaced = std::move(entry)).line;
}

void ShapedLines::clear() {
    entries_.clear();
    oldest_ = 0;
}
