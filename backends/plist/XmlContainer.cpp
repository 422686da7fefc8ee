#include "backends/plist/XmlContainer.hpp"

#include "backends/plist/XmlText.hpp"

#include <algorithm>

namespace {

/// Behind the character, comment or instruction that begins there; nullopt for a tag, which between
/// two children is that of a last key without a value.
std::optional<std::size_t> nextBetweenChildren(std::string_view text, std::size_t begin) {
    if (text[begin] != '<') return begin + 1;
    const std::string_view rest = text.substr(begin);
    const std::string_view mark = rest.starts_with("<!--") ? "-->" : "?>";
    if (mark == "?>" && !rest.starts_with("<?")) return std::nullopt;
    return text.find(mark, begin) + mark.size();
}

std::string withReplacement(std::string_view text, std::size_t begin, std::size_t end,
                            std::string_view replacement) {
    return std::string(text.substr(0, begin)).append(replacement).append(text.substr(end));
}

}  // namespace

// A key that stands twice in a dictionary counts with its last value, so what was found in an
// earlier one is forgotten when the next begins.
std::optional<XmlContainer> XmlContainer::find(std::string_view text,
                                               const PropertyListPath& path) {
    XmlContainer found;
    found.text_ = text;
    const auto listener = [&](const PropertyListPath& at, const XmlPlace& place) {
        const bool hasBegun = place.end == 0;
        if (hasBegun && at.size() <= path.size() &&
            std::equal(at.begin(), at.end(), path.begin())) {
            found.children_.clear();
            found.place_ = {};
        }
        if (hasBegun) return;
        if (at == path) found.place_ = place;
        const bool isChild =
            at.size() == path.size() + 1 && std::equal(path.begin(), path.end(), at.begin());
        if (isChild) found.children_.push_back({at.back(), place});
    };
    const DecodedPropertyList root = readXmlPropertyList(text, listener);
    const XmlPlace& place = found.place_;
    const std::string_view whole = text.substr(place.begin, place.end - place.begin);
    const bool isContainer = whole.starts_with("<array") || whole.starts_with("<dict");
    if (!root || !isContainer) return std::nullopt;
    found.contents_ = text.find('>', place.begin) + 1;
    found.contentsEnd_ = found.isEmptyTag() ? place.end : text.rfind("</", place.end - 1);
    return found;
}

std::optional<std::size_t> XmlContainer::entry(std::string_view key) const {
    for (std::size_t i = children_.size(); i-- > 0;)
        if (children_[i].key == key) return i;
    return std::nullopt;
}

std::size_t XmlContainer::endBefore(std::size_t child) const {
    return child == 0 ? contents_ : children_[child - 1].place.end;
}

/// Where a child's region begins: at the first line break outside comments that comes behind the
/// child before, or right behind that child.
std::size_t XmlContainer::boundary(std::size_t child) const {
    const std::size_t begin = endBefore(child);
    const std::size_t end = child == count() ? contentsEnd_ : children_[child].place.entry;
    for (std::optional<std::size_t> at = begin; at && *at < end;
         at = nextBetweenChildren(text_, *at))
        if (text_[*at] == '\n') return *at > begin && text_[*at - 1] == '\r' ? *at - 1 : *at;
    return begin;
}

XmlContainer::Region XmlContainer::regionOf(std::size_t child) const {
    const std::size_t begin = boundary(child);
    return {std::string(between(begin, boundary(child + 1))), begin - endBefore(child)};
}

std::string XmlContainer::withoutRegion(std::size_t child) const {
    return withReplacement(text_, boundary(child), boundary(child + 1), "");
}

std::string XmlContainer::withoutEntries(std::string_view key) const {
    std::string kept;
    std::size_t end = 0;
    for (std::size_t i = 0; i < count(); ++i) {
        if (children_[i].key != key) continue;
        kept += between(end, boundary(i));
        end = boundary(i + 1);
    }
    return kept.append(text_.substr(end));
}

std::string XmlContainer::withRegion(std::size_t child, const Region& region) const {
    if (isEmptyTag()) return withInsertion(contents_, region.text + closingBreak(region.text));
    if (!region.distance) return withInsertion(boundary(child), region.text);
    const std::size_t end = child == count() ? contentsEnd_ : children_[child].place.entry;
    const std::size_t own = endBefore(child) + *region.distance;
    std::optional<std::size_t> at = endBefore(child);
    while (at && *at < own && *at < end)
        at = nextBetweenChildren(text_, *at);
    return withInsertion(at == own ? own : boundary(child), region.text);
}

/// The white space that ends there, as far as it goes.
std::string_view XmlContainer::blanksBefore(std::size_t offset) const {
    const auto last = text_.substr(0, offset).find_last_not_of(xmlBlanks);
    const std::size_t begin = last == std::string_view::npos ? 0 : last + 1;
    return between(begin, offset);
}

/// The last line break with the indentation behind it, if nothing else stands before the offset on
/// its line; else the blanks there.
std::string_view XmlContainer::lineBreakBefore(std::size_t offset) const {
    const std::string_view blanks = blanksBefore(offset);
    const auto feed = blanks.rfind('\n');
    if (feed == std::string_view::npos) return blanks;
    return blanks.substr(feed > 0 && blanks[feed - 1] == '\r' ? feed - 1 : feed);
}

std::string_view XmlContainer::indentOfLine(std::size_t offset) const {
    const std::size_t line = text_.substr(0, offset).rfind('\n') + 1;  // 0 in the first line.
    const std::string_view rest = text_.substr(line);
    return rest.substr(0, std::min(rest.find_first_not_of(" \t"), rest.size()));
}

bool XmlContainer::beginsLine(std::size_t offset) const {
    const std::string_view blanks = blanksBefore(offset);
    return blanks.size() == offset || blanks.find('\n') != std::string_view::npos;
}

std::string XmlContainer::lineEnd() const {
    const auto feed = text_.find('\n');
    const bool isPair = feed != std::string_view::npos && feed > 0 && text_[feed - 1] == '\r';
    return isPair ? "\r\n" : "\n";
}

/// As the first indented line of the text is.
std::string XmlContainer::indentUnit() const {
    for (std::size_t feed = text_.find('\n'); feed != std::string_view::npos;
         feed = text_.find('\n', feed + 1)) {
        const std::string_view indent = indentOfLine(feed + 1);
        if (!indent.empty()) return std::string(indent);
    }
    return "\t";
}

/// What stands before each child: as before the last one that has a line of its own, or else before
/// the last one.
std::string XmlContainer::breakBeforeChild() const {
    if (children_.empty()) {
        if (!beginsLine(place_.entry)) return "";
        return lineEnd() + std::string(indentOfLine(place_.entry)) + indentUnit();
    }
    for (std::size_t i = count(); i-- > 0;)
        if (beginsLine(children_[i].place.entry))
            return std::string(lineBreakBefore(children_[i].place.entry));
    return std::string(blanksBefore(children_.back().place.entry));
}

/// What puts the end tag of a container without children on a line of its own, behind the first one
/// if that has such a line.
std::string XmlContainer::closingBreak(std::string_view region) const {
    const bool isOnLine = between(contents_, contentsEnd_).find('\n') != std::string_view::npos;
    if (!children_.empty() || isOnLine || region.find('\n') > region.find('<')) return "";
    return lineEnd() + std::string(indentOfLine(place_.entry));
}

/// Inserts a child's text; opens a container that is an empty tag.
std::string XmlContainer::withInsertion(std::size_t offset, const std::string& region) const {
    if (!isEmptyTag()) return withReplacement(text_, offset, offset, region);
    const std::string name = text_.substr(place_.begin).starts_with("<array") ? "array" : "dict";
    return withReplacement(text_, place_.begin, place_.end,
                           "<" + name + ">" + region + "</" + name + ">");
}

std::optional<std::string> XmlContainer::withChild(std::size_t child, const PropertyValue& value,
                                                   const std::string* key) const {
    const std::string before = breakBeforeChild();
    std::string beforeValue = before;
    if (!children_.empty() && key) beforeValue = lineBreakBefore(children_.back().place.begin);
    const auto feed = before.rfind('\n');
    const bool isOnLine = feed != std::string::npos;
    const XmlLayout layout = isOnLine ? XmlLayout{lineEnd(), before.substr(feed + 1), indentUnit()}
                                      : XmlLayout{"", "", ""};
    const auto text = writeXmlValue(value, layout);
    if (!text || (key && !canStandInXml(*key))) return std::nullopt;
    std::string region = before;
    if (key) region += "<key>" + escaped(*key) + "</key>" + beforeValue;
    region += *text;
    return withInsertion(boundary(child), region + closingBreak(region));
}

std::optional<std::string> XmlContainer::withValue(std::size_t child,
                                                   const PropertyValue& value) const {
    const XmlPlace& place = children_[child].place;
    const XmlLayout layout =
        beginsLine(place.entry)
            ? XmlLayout{lineEnd(), std::string(indentOfLine(place.entry)), indentUnit()}
            : XmlLayout{"", "", ""};
    const auto text = writeXmlValue(value, layout);
    if (!text) return std::nullopt;
    return withReplacement(text_, place.begin, place.end, *text);
}
