#pragma once

#include "backends/plist/Forms.hpp"

#include <string>
#include <string_view>
#include <vector>

/// An array or dictionary as it stands in a text, for changing its children there and nothing else:
///
///     if (const auto list = XmlContainer::find(text, {}))
///         text = list->withChild(0, value, nullptr);
///
/// A child is an element, or an entry with its key. Its *region* is what moves and goes along with
/// it: the line break and the indentation before it, the comments between it and the child before,
/// and the comments behind it on the line on which it ends. A comment on the line of the
/// container's start tag, and those behind the last child on lines of their own, belong to the
/// container. Where children stand on one line, the comments before a child are its own.
///
/// The text has to live as long as this. Each change answers the whole new text.
class XmlContainer {
 public:
    /// The container at that path of a text that can be read; nullopt if there is none.
    static std::optional<XmlContainer> find(std::string_view text, const PropertyListPath& path);

    std::size_t count() const { return children_.size(); }
    /// The number of the entry with that key; of several, the last one, which is the one that
    /// counts.
    std::optional<std::size_t> entry(std::string_view key) const;

    struct Region {
        std::string text;
        /// How far behind the end of the child before it the region begins; nullopt for anywhere.
        std::optional<std::size_t> distance = {};
    };
    Region regionOf(std::size_t child) const;
    std::string withoutRegion(std::size_t child) const;
    /// Without the regions of all entries with that key.
    std::string withoutEntries(std::string_view key) const;
    /// Puts a region where the region of a child of that number begins; with a distance there, if
    /// that is between the two children and outside comments.
    std::string withRegion(std::size_t child, const Region& region) const;

    /// Puts a new child at that number, laid out as its siblings are; in a container without any,
    /// on a line of its own if the container is. nullopt for a value without an XML form. `key` is
    /// null in an array.
    std::optional<std::string> withChild(std::size_t child, const PropertyValue& value,
                                         const std::string* key) const;
    /// Replaces the value of an element or entry and keeps its key.
    std::optional<std::string> withValue(std::size_t child, const PropertyValue& value) const;

 private:
    struct Child {
        std::string key;  ///< Of an entry.
        XmlPlace place;
    };

    std::string_view between(std::size_t begin, std::size_t end) const {
        return text_.substr(begin, end - begin);
    }
    bool isEmptyTag() const { return contents_ == place_.end; }
    std::size_t endBefore(std::size_t child) const;
    std::size_t boundary(std::size_t child) const;
    std::string_view blanksBefore(std::size_t offset) const;
    std::string_view lineBreakBefore(std::size_t offset) const;
    std::string_view indentOfLine(std::size_t offset) const;
    bool beginsLine(std::size_t offset) const;
    std::string lineEnd() const;
    std::string indentUnit() const;
    std::string breakBeforeChild() const;
    std::string closingBreak(std::string_view region) const;
    std::string withInsertion(std::size_t offset, const std::string& region) const;

    std::string_view text_;
    XmlPlace place_;
    std::size_t contents_ = 0;     ///< Behind the start tag.
    std::size_t contentsEnd_ = 0;  ///< Where the end tag begins.
    std::vector<Child> children_;
};
