#include "backends/plist/XmlShape.hpp"

#include "platform/foundation/NSPropertyList.hpp"

#include <algorithm>
#include <array>
#include <optional>
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
    const auto start = text.find_first_not_of(" \t\r\n");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

class XmlShape {
 public:
    explicit XmlShape(std::string_view text) : rest_(text) {}

    bool isReadable() {
        for (;;) {
            rest_ = withoutLeadingBlanks(rest_);
            if (rest_.empty()) return hasRoot_ && open_.empty();
            if (!takeMarkup()) return false;
        }
    }

 private:
    bool takeMarkup() {
        if (take("<!--")) return takeUpTo("-->").has_value();
        if (take("<?")) return takeUnambiguouslyUpTo("?>").has_value();
        if (take("<!DOCTYPE")) return takeDocumentType();
        if (take("</")) return takeEndOfContainer();
        return take("<") && takeElement();
    }

    bool takeDocumentType() {
        const auto contents = takeUnambiguouslyUpTo(">");
        return contents && contents->find('[') == std::string_view::npos && !hasRoot_;
    }

    bool takeElement() {
        const auto tag = takeUnambiguouslyUpTo(">");
        if (!tag || tag->find('<') != std::string_view::npos) return false;
        const bool isEmpty = tag->ends_with('/');
        const std::string_view inside = tag->substr(0, tag->size() - (isEmpty ? 1 : 0));
        const std::string_view name = inside.substr(0, inside.find_first_of(" \t\r\n"));
        if (name == documentElement) return !isEmpty && enterDocument();
        const bool hasAttributes = !withoutLeadingBlanks(inside.substr(name.size())).empty();
        if (hasAttributes || !takePlace()) return false;
        if (isText(name)) return isEmpty || takeText(name);
        return isContainer(name) && enterContainer(name) && (!isEmpty || leave());
    }

    /// Whether one more value can stand here: many inside a container, one outside.
    bool takePlace() {
        const bool isOutside = open_.empty() || open_.back() == documentElement;
        return !isOutside || !std::exchange(hasRoot_, true);
    }

    bool enterDocument() {
        if (hasRoot_ || !open_.empty()) return false;
        open_.push_back(documentElement);
        return true;
    }

    bool enterContainer(std::string_view name) {
        open_.push_back(name);
        const bool isInDocument = open_.front() == documentElement;
        return open_.size() - (isInDocument ? 1 : 0) <= NSPropertyList::maximumDepth;
    }

    bool leave() {
        open_.pop_back();
        return true;
    }

    bool takeEndOfContainer() { return !open_.empty() && takeEndOf(open_.back()) && leave(); }

    /// The rest of an end tag, behind its "</".
    bool takeEndOf(std::string_view name) {
        if (!take(name)) return false;
        rest_ = withoutLeadingBlanks(rest_);
        return take(">");
    }

    /// The contents and the end tag of an element that holds text, with comments and CDATA in it.
    bool takeText(std::string_view name) {
        const std::size_t bytesBefore = rest_.size();
        std::size_t entities = 0;
        for (;;) {
            const auto text = takeUpTo("<");
            if (!text) return false;
            entities += static_cast<std::size_t>(std::ranges::count(*text, '&'));
            if (entities * (bytesBefore - rest_.size()) > maximumEntityBytes) return false;
            if (take("/")) return takeEndOf(name);
            const bool isTaken = take("!--")        ? takeUpTo("-->").has_value()
                                 : take("![CDATA[") ? takeUpTo("]]>").has_value()
                                                    : false;
            if (!isTaken) return false;
        }
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
    std::optional<std::string_view> takeUnambiguouslyUpTo(std::string_view mark) {
        const auto taken = takeUpTo(mark);
        return taken && std::ranges::count(*taken, '"') % 2 == 0 ? taken : std::nullopt;
    }

    std::string_view rest_;
    std::vector<std::string_view> open_;  ///< The elements that are open, outermost first.
    bool hasRoot_ = false;
};

}  // namespace

bool isReadableXml(std::string_view text) {
    return text.find('\0') == std::string_view::npos && XmlShape(text).isReadable();
}
