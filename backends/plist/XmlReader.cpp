#include "backends/plist/Forms.hpp"
#include "backends/plist/XmlText.hpp"

#include <algorithm>
#include <array>
#include <utility>

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

std::string_view withoutBlanks(std::string_view text) {
    return withoutLeadingBlanks(text.substr(0, text.find_last_not_of(xmlBlanks) + 1));
}

std::string tag(std::string_view name) {
    constexpr std::size_t longestShown = 20;
    const bool isLong = name.size() > longestShown;
    return "<" + std::string(name.substr(0, longestShown)) + (isLong ? "..." : "") + ">";
}

/// The value of an element that has no others inside it.
PropertyValue valueOfLeaf(std::string_view name, std::string contents) {
    if (name == "true" || name == "false") return PropertyValue(name == "true");
    if (name == "string" || name == "key") return PropertyValue(std::move(contents));
    const std::string_view text = withoutBlanks(contents);
    if (name == "integer") return integerOfText(text);
    if (name == "real") return PropertyValue(realOfText(text));
    if (name == "date") return PropertyValue(dateOfText(text));
    return PropertyValue(dataOfText(text));
}

/// An element that is open, with what was read of it so far.
struct Open {
    std::string_view name;
    std::size_t offset = 0;
    std::size_t values = 0;  ///< Begun inside it; keys are none.
    PropertyValue::Array elements{};
    PropertyValue::Dictionary entries{};
    std::string key{};  ///< Of a dictionary, the last one.
    std::size_t keyOffset = 0;
    bool awaitsValue = false;
    bool endsWithKey = false;  ///< Whether the last value is a <key>, which reads as a string.
};

class XmlReader {
 public:
    XmlReader(std::string_view text, const XmlValueListener& listener)
        : text_(text), rest_(text), listener_(listener) {}

    DecodedPropertyList read() {
        const auto zero = text_.find('\0');
        if (zero != std::string_view::npos) refuse(zero, "a zero byte");
        while (!fault_) {
            rest_ = withoutLeadingBlanks(rest_);
            if (rest_.empty()) break;
            takeMarkup();
        }
        if (!open_.empty()) refuse(text_.size(), "the file ends before " + endOf(open_.back()));
        if (!hasRoot_) refuse(text_.size(), "there is no value in the file");
        if (fault_) return Failure{*std::move(fault_)};
        return std::move(root_);
    }

 private:
    std::size_t position() const { return text_.size() - rest_.size(); }

    /// The first reason counts. Always false, for its callers to hand on.
    bool refuse(std::size_t offset, std::string reason) {
        if (!fault_) fault_ = {placeInText(text_, offset), std::move(reason)};
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
        if (hasRoot_ || std::exchange(hasDocument_, true)) return refuse(start, "a second <plist>");
        open_.push_back({documentElement, start});
        return true;
    }

    bool takeContainer(std::string_view name, std::size_t start, bool isEmpty) {
        if (!takePlace(name, start)) return false;
        open_.push_back({name, start});
        if (open_.size() - (hasDocument_ ? 1 : 0) > NSPropertyList::maximumDepth)
            return refuse(start, "more containers in each other than can be read");
        if (isEmpty) closeContainer();
        return true;
    }

    bool takeLeaf(std::string_view name, std::size_t start, bool isEmpty) {
        const bool isKey = name == "key" && !open_.empty() && open_.back().name == "dict" &&
                           !open_.back().awaitsValue;
        if (isKey ? !takeCount(start) : !takePlace(name, start)) return false;
        if (isKey && isEmpty) return refuse(start, "an empty key");
        std::string contents;
        if (!isEmpty && !takeText(name, start, contents)) return false;
        if (!isKey) {
            tellEnd(start);
            return addValue(valueOfLeaf(name, std::move(contents)));
        }
        Open& dictionary = open_.back();
        dictionary.key = std::move(contents);
        dictionary.keyOffset = start;
        dictionary.awaitsValue = true;
        return true;
    }

    /// Always true.
    bool addValue(PropertyValue value) {
        if (open_.empty() || open_.back().name == documentElement)
            root_ = std::move(value);
        else if (Open& container = open_.back(); container.name == "dict")
            container.entries.emplace_back(std::move(container.key), std::move(value));
        else
            container.elements.push_back(std::move(value));
        return true;
    }

    void closeContainer() {
        Open closed = std::move(open_.back());
        open_.pop_back();
        if (closed.name == documentElement) return;
        tellEnd(closed.offset);
        if (closed.name == "dict") addValue(PropertyValue(std::move(closed.entries)));
        if (closed.name == "array") addValue(PropertyValue(std::move(closed.elements)));
    }

    bool takeCount(std::size_t start) {
        return ++values_ <= maximumValues || refuse(start, "more values than can be read");
    }

    /// Whether one more value can stand here: many inside a container, one outside.
    bool takePlace(std::string_view name, std::size_t start) {
        if (!takeCount(start)) return false;
        const bool isOutside = open_.empty() || open_.back().name == documentElement;
        if (open_.empty() && hasDocument_) return refuse(start, "a value behind </plist>");
        if (isOutside && std::exchange(hasRoot_, true))
            return refuse(start, "a second value at the root of the list");
        if (isOutside) return tell(start, start, 0);
        Open& container = open_.back();
        const bool isDictionary = container.name == "dict";
        if (isDictionary && !container.awaitsValue) {
            const std::string what =
                container.endsWithKey ? "two keys before one value" : "a value without a key";
            return refuse(start, what + ", in the <dict> of line " + lineOf(container));
        }
        if (isDictionary && container.values == maximumDictionaryEntries)
            return refuse(start, "more entries in one <dict> than can be read");
        ++container.values;
        tell(isDictionary ? container.keyOffset : start, start, 0);
        container.endsWithKey = name == "key";
        container.awaitsValue = false;
        return true;
    }

    /// Tells of the value that stands where the reader is. Always true.
    bool tell(std::size_t entry, std::size_t begin, std::size_t end) const {
        if (!listener_) return true;
        PropertyListPath path;
        for (const Open& element : open_) {
            if (element.name == "dict") path.emplace_back(element.key);
            if (element.name == "array") path.push_back(std::to_string(element.values - 1));
        }
        listener_(path, {entry, begin, end});
        return true;
    }

    /// Called before the value is added, while the dictionary around it still has its key.
    void tellEnd(std::size_t begin) const {
        const bool isEntry = !open_.empty() && open_.back().name == "dict";
        tell(isEntry ? open_.back().keyOffset : begin, begin, position());
    }

    bool takeEndOfContainer(std::size_t start) {
        if (open_.empty()) return refuse(start, "an end tag without its beginning");
        if (!takeEndOf(open_.back().name)) return refuse(start, wrongEnd(open_.back()));
        closeContainer();
        return true;
    }

    /// The rest of an end tag, behind its "</".
    bool takeEndOf(std::string_view name) {
        if (!take(name)) return false;
        rest_ = withoutLeadingBlanks(rest_);
        return take(">");
    }

    /// Takes the contents of an element that holds text, with comments and CDATA in it, and its end
    /// tag.
    bool takeText(std::string_view name, std::size_t start, std::string& contents) {
        const bool hasEntities = name == "key" || name == "string";
        for (;;) {
            const std::size_t textStart = position();
            const auto text = takeUpTo("<");
            if (!text) return refuse(start, tag(name) + " without its end");
            if (!hasEntities)
                contents += *text;
            else if (const auto unknown = appendUnescaped(contents, *text))
                return refuse(textStart + *unknown, "a bare '&', which is written '&amp;'");
            const std::size_t markStart = position() - 1;
            if (take("/")) return takeEndOf(name) || refuse(markStart, wrongEnd({name, start}));
            if (!takeInsideText(contents))
                return refuse(markStart, "a tag inside " + tag(name) + "; a '<' is written '&lt;'");
        }
    }

    /// A comment or CDATA, behind its '<'.
    bool takeInsideText(std::string& contents) {
        if (take("!--")) return takeUpTo("-->").has_value();
        const auto text = take("![CDATA[") ? takeUpTo("]]>") : std::nullopt;
        contents += text.value_or("");
        return text.has_value();
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

    /// The same inside a tag. Marks in double quotes would be none; with paired quotes before it,
    /// the first mark is one for every reader.
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
    bool hasDocument_ = false;
    bool hasRoot_ = false;
    PropertyValue root_;
    std::optional<PropertyListFault> fault_;
};

}  // namespace

DecodedPropertyList readXmlPropertyList(std::string_view text, const XmlValueListener& listener) {
    return XmlReader(text, listener).read();
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
