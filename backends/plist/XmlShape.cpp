#include "backends/plist/XmlShape.hpp"

#include "backends/plist/XmlText.hpp"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace {

constexpr std::array<std::string_view, 8> textElements = {"key",  "string", "integer", "real",
                                                          "date", "data",   "true",    "false"};

constexpr std::string_view documentElement = "plist";

bool isText(std::string_view name) {
    return std::ranges::find(textElements, name) != textElements.end();
}

bool isContainer(std::string_view name) {
    return name == "array" || name == "dict";
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    const auto start = text.find_first_not_of(xmlBlanks);
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

std::string tag(std::string_view name) {
    constexpr std::size_t longestShown = 20;
    const bool isLong = name.size() > longestShown;
    return "<" + std::string(name.substr(0, longestShown)) + (isLong ? "..." : "") + ">";
}

/// An element that is open.
struct Open {
    std::string_view name;
    std::size_t offset = 0;
    std::size_t values = 0;  ///< In it so far; keys are none.
    std::string_view key{};  ///< Of a dictionary, the last one; as it is written.
    std::size_t keyOffset = 0;
    bool awaitsValue = false;
    bool endsWithKey = false;  ///< Whether the last value is a <key>, which reads as a text.
};

class XmlShape {
 public:
    XmlShape(std::string_view text, const XmlValueListener& listener)
        : text_(text), rest_(text), listener_(listener) {}

    std::optional<XmlFault> fault() {
        for (;;) {
            rest_ = withoutLeadingBlanks(rest_);
            if (rest_.empty()) break;
            if (!takeMarkup()) return fault_;
        }
        if (!open_.empty()) refuse(text_.size(), "the file ends before " + endOf(open_.back()));
        if (open_.empty() && !hasRoot_) refuse(text_.size(), "there is no value in the file");
        return fault_;
    }

 private:
    std::size_t position() const { return text_.size() - rest_.size(); }

    /// The first reason counts. Always false, for its callers to hand on.
    bool refuse(std::size_t offset, std::string reason) {
        if (!fault_) fault_ = {offset, std::move(reason)};
        return false;
    }

    std::string lineOf(const Open& element) const {
        return std::to_string(placeInText(text_, element.offset).line);
    }

    std::string endOf(const Open& element) const {
        return tag("/" + std::string(element.name)) + " closes the " + tag(element.name) +
               " of line " + lineOf(element);
    }

    std::string wrongEnd(const Open& element) const {
        return "the wrong end tag: only " + endOf(element);
    }

    bool takeMarkup() {
        const std::size_t start = position();
        if (take("<!--")) return takeUpTo("-->") || refuse(start, "a comment without its end");
        if (take("<?")) return takeInTag("?>", start).has_value();
        if (take("<!DOCTYPE")) return takeDocumentType(start);
        if (take("</")) return takeEndOfContainer(start);
        if (take("<")) return takeElement(start);
        return refuse(start, "text where a tag was expected");
    }

    bool takeDocumentType(std::size_t start) {
        const auto contents = takeInTag(">", start);
        if (!contents) return false;
        if (contents->find('[') != std::string_view::npos)
            return refuse(start, "a document type with declarations of its own");
        return !hasRoot_ || refuse(start, "a document type behind the first value");
    }

    bool takeElement(std::size_t start) {
        const auto inside = takeInTag(">", start);
        if (!inside) return false;
        if (inside->find('<') != std::string_view::npos)
            return refuse(start, "a tag without its '>'");
        const bool isEmpty = inside->ends_with('/');
        const std::string_view whole = inside->substr(0, inside->size() - (isEmpty ? 1 : 0));
        const std::string_view name = whole.substr(0, whole.find_first_of(xmlBlanks));
        if (name == documentElement) return enterDocument(start, isEmpty);
        if (!isText(name) && !isContainer(name))
            return refuse(start, "there is no element " + tag(name) + " in a property list");
        if (!withoutLeadingBlanks(whole.substr(name.size())).empty())
            return refuse(start, tag(name) + " with attributes");
        return isContainer(name) ? takeContainer(name, start, isEmpty)
                                 : takeLeaf(name, start, isEmpty);
    }

    bool enterDocument(std::size_t start, bool isEmpty) {
        if (isEmpty) return refuse(start, "there is no value in the file");
        if (hasRoot_ || !open_.empty()) return refuse(start, "a second <plist>");
        open_.push_back({documentElement, start});
        return true;
    }

    bool takeContainer(std::string_view name, std::size_t start, bool isEmpty) {
        if (!takePlace(name, start)) return false;
        open_.push_back({name, start});
        const bool isInDocument = open_.front().name == documentElement;
        if (open_.size() - (isInDocument ? 1 : 0) > NSPropertyList::maximumDepth)
            return refuse(start, "more containers in each other than can be read");
        if (isEmpty) open_.pop_back();
        return true;
    }

    bool takeLeaf(std::string_view name, std::size_t start, bool isEmpty) {
        const bool isKey = name == "key" && !open_.empty() && open_.back().name == "dict" &&
                           !open_.back().awaitsValue;
        if (isKey ? !takeCount(start) : !takePlace(name, start)) return false;
        if (isEmpty) return !isKey || refuse(start, "an empty key");
        const std::string_view before = rest_;
        if (!takeText(name, start)) return false;
        if (!isKey) return true;
        Open& dictionary = open_.back();
        dictionary.key = before.substr(0, before.find('<'));
        dictionary.keyOffset = start;
        dictionary.awaitsValue = true;
        return true;
    }

    bool takeCount(std::size_t start) {
        return ++values_ <= maximumValues || refuse(start, "more values than can be read");
    }

    /// Whether one more value can stand here: many inside a container, one outside.
    bool takePlace(std::string_view name, std::size_t start) {
        if (!takeCount(start)) return false;
        const bool isOutside = open_.empty() || open_.back().name == documentElement;
        if (isOutside && std::exchange(hasRoot_, true))
            return refuse(start, "a second value at the root of the list");
        if (isOutside) return tell(start);
        Open& container = open_.back();
        const bool isDictionary = container.name == "dict";
        if (isDictionary && !container.awaitsValue) {
            const std::string what =
                container.endsWithKey ? "two keys before one value" : "a value without a key";
            return refuse(start, what + ", in the <dict> of line " + lineOf(container));
        }
        if (isDictionary && container.values == maximumDictionaryEntries)
            return refuse(start, "more entries in one <dict> than can be read");
        tell(isDictionary ? container.keyOffset : start);
        ++container.values;
        container.endsWithKey = name == "key";
        container.awaitsValue = false;
        return true;
    }

    /// Always true.
    bool tell(std::size_t start) const {
        if (!listener_) return true;
        PropertyListPath path;
        for (const Open& element : open_) {
            // An outer container has counted the one that the path goes on in.
            const std::size_t number = element.values - (&element == &open_.back() ? 0 : 1);
            if (element.name == "dict") path.emplace_back(element.key);
            if (element.name == "array") path.push_back(std::to_string(number));
        }
        listener_(path, start);
        return true;
    }

    bool takeEndOfContainer(std::size_t start) {
        if (open_.empty()) return refuse(start, "an end tag without its beginning");
        if (!takeEndOf(open_.back().name)) return refuse(start, wrongEnd(open_.back()));
        open_.pop_back();
        return true;
    }

    /// The rest of an end tag, behind its "</".
    bool takeEndOf(std::string_view name) {
        if (!take(name)) return false;
        rest_ = withoutLeadingBlanks(rest_);
        return take(">");
    }

    /// The contents and the end tag of an element that holds text, with comments and CDATA in it.
    bool takeText(std::string_view name, std::size_t start) {
        const bool hasEntities = name == "key" || name == "string";
        const std::size_t before = position();
        const std::size_t entityBytesBefore = entityBytes_;
        std::size_t entities = 0;
        for (;;) {
            const std::size_t textStart = position();
            const auto text = takeUpTo("<");
            if (!text) return refuse(start, tag(name) + " without its end");
            entities += static_cast<std::size_t>(std::ranges::count(*text, '&'));
            entityBytes_ = entityBytesBefore + entities * (position() - before);
            if (entityBytes_ > maximumEntityBytes)
                return refuse(start, "more entities than can be read");
            const auto unknown = hasEntities ? unknownEntity(*text) : std::nullopt;
            if (unknown)
                return refuse(textStart + *unknown, "a bare '&', which is written '&amp;'");
            const std::size_t markStart = position() - 1;
            if (take("/")) return takeEndOf(name) || refuse(markStart, wrongEnd({name, start}));
            if (!takeInsideText())
                return refuse(markStart, "a tag inside " + tag(name) + "; a '<' is written '&lt;'");
        }
    }

    /// A comment or CDATA, behind its '<'.
    bool takeInsideText() {
        if (take("!--")) return takeUpTo("-->").has_value();
        return take("![CDATA[") && takeUpTo("]]>");
    }

    bool take(std::string_view prefix) {
        if (!rest_.starts_with(prefix)) return false;
        rest_.remove_prefix(prefix.size());
        return true;
    }

    /// What stands before the mark, both taken; nullopt when the mark does not come.
    std::optional<std::string_view> takeUpTo(std::string_view mark) {
        const auto end = rest_.find(mark);
        if (end == std::string_view::npos) return std::nullopt;
        const std::string_view taken = rest_.substr(0, end);
        rest_.remove_prefix(end + mark.size());
        return taken;
    }

    /// The same inside a tag, where the library passes over marks in double quotes: with paired
    /// quotes before it, the first mark is the one that the library finds.
    std::optional<std::string_view> takeInTag(std::string_view mark, std::size_t start) {
        const auto taken = takeUpTo(mark);
        if (!taken) refuse(start, "a tag without its '" + std::string(mark) + "'");
        if (taken && std::ranges::count(*taken, '"') % 2 == 0) return taken;
        refuse(start, "an unpaired double quote in a tag");
        return std::nullopt;
    }

    std::string_view text_;
    std::string_view rest_;
    const XmlValueListener& listener_;
    std::vector<Open> open_;  ///< Outermost first.
    std::uint64_t values_ = 0;
    std::size_t entityBytes_ = 0;
    bool hasRoot_ = false;
    std::optional<XmlFault> fault_;
};

}  // namespace

std::optional<XmlFault> faultInXml(std::string_view text, const XmlValueListener& listener) {
    if (const auto zero = text.find('\0'); zero != std::string_view::npos)
        return XmlFault{zero, "a zero byte"};
    return XmlShape(text, listener).fault();
}

TextPlace placeInText(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const auto lineStart = before.rfind('\n') + 1;  // 0 in the first line.
    const auto isCharacterStart = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;
    };
    return {
        static_cast<int>(std::ranges::count(before, '\n')) + 1,
        static_cast<int>(std::ranges::count_if(before.substr(lineStart), isCharacterStart)) + 1};
}
