#include "backends/cairo/CaptionLine.hpp"

#include "backends/cairo/Handles.hpp"
#include "platform/foundation/PrintableText.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace painting {

std::string displayableLine(std::string_view text, std::size_t characters) {
    constexpr std::size_t longestCharacter = 4;  // bytes in UTF-8
    const std::string_view head = text.substr(0, characters * longestCharacter);
    std::string line = printableLine(head);
    std::string_view rest = line;
    for (std::size_t count = 0; !rest.empty() && count < characters; ++count)
        rest.remove_prefix(firstCharacter(rest).bytes);
    const bool isCut = !rest.empty() || head.size() < text.size();
    line.resize(line.size() - rest.size());
    if (isCut) line += "…";
    return line;
}

namespace {

constexpr std::string_view ellipsis = "…";
constexpr std::string_view beforeValue = ": ";
constexpr std::size_t longestValue = 64;     // bytes
constexpr std::size_t longestRemark = 1024;  // bytes
// Characters: fewer do not tell one name from another. A remark counts with its parentheses.
constexpr std::size_t leastOfName = 8;
constexpr std::size_t leastOfRemark = 8;
constexpr int mostTries = 8;

/// Where the title ends and the value begins.
std::size_t endOfTitle(std::string_view text) {
    const std::size_t from = text.size() > longestValue ? text.size() - longestValue : 0;
    const std::size_t found = text.substr(from).rfind(beforeValue);
    return found == std::string_view::npos ? text.size() : from + found;
}

/// Where the name ends: at the blank before the remark in parentheses that ends the title.
std::size_t endOfName(std::string_view title) {
    if (!title.ends_with(')')) return title.size();
    const std::size_t farthest = title.size() > longestRemark ? title.size() - longestRemark : 0;
    int open = 0;
    for (std::size_t at = title.size(); at-- > farthest;) {
        if (title[at] == ')') ++open;
        if (title[at] == '(' && --open == 0)
            return at > 0 && title[at - 1] == ' ' ? at - 1 : title.size();
    }
    return title.size();
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The text; of a long one the beginning and the end with an ellipsis in between.
std::string displayableEnds(std::string_view text, std::size_t characters) {
    const std::size_t half = characters / 2;
    std::string line = displayableLine(text, characters);
    if (text.size() <= characters || !line.ends_with(ellipsis) || text.ends_with(ellipsis))
        return line;
    std::size_t from = text.size() - half;
    while (from < text.size() && continuesCharacter(text[from]))
        ++from;
    return displayableLine(text, half) + displayableLine(text.substr(from), half);
}

/// What a reader takes for one character: a letter with its marks, or a ligature.
struct Cluster {
    std::size_t begin;  // byte
    int width;
};

/// In the order of the text; the last one stands for its end.
std::vector<Cluster> clustersOf(PangoLayout* layout, std::size_t textSize) {
    std::vector<Cluster> clusters;
    const PangoLayoutIterPtr at(pango_layout_get_iter(layout));
    do {
        PangoRectangle logical;
        pango_layout_iter_get_cluster_extents(at.get(), nullptr, &logical);
        clusters.push_back({std::size_t(pango_layout_iter_get_index(at.get())), logical.width});
    } while (pango_layout_iter_next_cluster(at.get()) != FALSE);
    clusters.push_back({textSize, 0});
    std::ranges::stable_sort(clusters, {}, &Cluster::begin);
    return clusters;
}

int widthOf(PangoLayout* layout, std::string_view text) {
    pango_layout_set_text(layout, text.data(), int(text.size()));
    PangoRectangle logical;
    pango_layout_get_extents(layout, nullptr, &logical);
    return logical.width;
}

/// The clusters left out of the middle of a part of the line; none at first.
class Gap {
 public:
    /// In the middle of the clusters [begin, end).
    Gap(const std::vector<Cluster>& clusters, std::size_t begin, std::size_t end)
        : clusters_(clusters),
          begin_(begin),
          end_(end),
          first_(begin + (end - begin) / 2),
          last_(first_) {}

    std::size_t left() const { return end_ - begin_ - (last_ - first_); }
    int width() const { return width_; }
    void grow() {
        const bool after = end_ - last_ >= first_ - begin_ && last_ < end_;
        width_ += clusters_[after ? last_++ : --first_].width;
    }
    std::string textWithout(const std::string& text) const {
        std::string_view before = std::string_view(text).substr(0, clusters_[first_].begin);
        std::string_view after = std::string_view(text).substr(clusters_[last_].begin);
        while (before.ends_with(' '))
            before.remove_suffix(1);
        // What follows the part begins with its own blank.
        while (last_ < end_ && after.starts_with(' '))
            after.remove_prefix(1);
        return std::string(before).append(ellipsis).append(after);
    }

 private:
    const std::vector<Cluster>& clusters_;
    std::size_t begin_;
    std::size_t end_;
    std::size_t first_;
    std::size_t last_;
    int width_ = 0;
};

bool fits(PangoLayout* layout, std::string_view text) {
    pango_layout_set_text(layout, text.data(), int(text.size()));
    return pango_layout_is_ellipsized(layout) == FALSE;
}

class Shortening {
 public:
    Shortening(PangoLayout* layout, const CaptionLine& line, int width)
        : layout_(layout), line_(line) {
        pango_layout_set_width(layout, -1);
        const int whole = widthOf(layout, line.text);
        clusters_ = clustersOf(layout, line.text.size());
        excess_ = whole + widthOf(layout, ellipsis) - width;
        pango_layout_set_width(layout, width);
    }

    /// Whether the line fits when the middle of the part [begin, end) (bytes) is left out while at
    /// least `least` of its clusters stay. The layout then has that text.
    bool leaveOut(std::size_t begin, std::size_t end, std::size_t least) {
        Gap gap(clusters_, clusterAt(begin), clusterAt(end));
        // Kerning makes the sum of widths inexact, so what should fit is tried.
        for (int tries = 0; gap.left() > least && tries < mostTries;) {
            gap.grow();
            if (gap.width() < excess_) continue;
            if (fits(layout_, gap.textWithout(line_.text))) return true;
            ++tries;
        }
        return false;
    }

 private:
    std::size_t clusterAt(std::size_t byte) const {
        const auto found = std::ranges::lower_bound(clusters_, byte, {}, &Cluster::begin);
        return std::size_t(found - clusters_.begin());
    }

    PangoLayout* layout_;
    const CaptionLine& line_;
    std::vector<Cluster> clusters_;
    int excess_ = 0;
};

}  // namespace

std::string_view CaptionLine::value() const {
    const std::size_t begin = titleEnd + beforeValue.size();
    return titleEnd > 0 && begin < text.size() ? std::string_view(text).substr(begin)
                                               : std::string_view();
}

CaptionLine captionLine(std::string_view text, std::size_t characters) {
    const std::size_t titleEnd = endOfTitle(text);
    const std::size_t nameEnd = endOfName(text.substr(0, titleEnd));
    if (nameEnd == 0 || nameEnd == text.size()) return {displayableLine(text, characters)};
    CaptionLine line{displayableEnds(text.substr(0, nameEnd), characters)};
    line.nameEnd = line.text.size();
    line.text += displayableLine(text.substr(nameEnd, titleEnd - nameEnd), characters);
    line.titleEnd = line.text.size();
    line.text += displayableLine(text.substr(titleEnd), characters);
    return line;
}

void setCaption(PangoLayout* layout, const CaptionLine& line, int width) {
    pango_layout_set_width(layout, width);
    if (fits(layout, line.text) || line.titleEnd == 0) return;
    Shortening shortening(layout, line, width);
    if (shortening.leaveOut(0, line.nameEnd, leastOfName)) return;
    if (shortening.leaveOut(line.nameEnd, line.titleEnd, leastOfRemark)) return;
    if (shortening.leaveOut(0, line.titleEnd, 0)) return;
    const std::string_view rest = line.value().empty() ? line.text : line.value();
    pango_layout_set_text(layout, rest.data(), int(rest.size()));
}

}  // namespace painting
