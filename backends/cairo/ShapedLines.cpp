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

}  // namespace

const ShapedLines::Line* ShapedLines::find(std::string_view text, const Style& style) const {
    if (text.size() > longestText) return nullptr;
    const std::size_t hash = hashOf(text);
    const auto found = std::ranges::find_if(entries_, [&](const Entry& entry) {
        return entry.hash == hash && entry.text == text && entry.style == style;
    });
    return found == entries_.end() ? nullptr : &found->line;
}

const ShapedLines::Line& ShapedLines::keep(std::string_view text, const Style& style, Line line) {
    if (text.size() > longestText) return unkept_ = std::move(line);
    Entry entry{hashOf(text), std::string(text), style, std::move(line)};
    if (entries_.size() < mostLines) return entries_.emplace_back(std::move(entry)).line;
    Entry& replaced = entries_[oldest_];
    oldest_ = (oldest_ + 1) % mostLines;
    return (replaced = std::move(entry)).line;
}

void ShapedLines::clear() {
    entries_.clear();
    oldest_ = 0;
}
