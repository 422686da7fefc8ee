#include "backends/plist/PropertyListEditor.hpp"

#include "backends/plist/PlistCodec.hpp"
#include "backends/plist/XmlContainer.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

/// The element of an array whose number the text is.
std::optional<std::size_t> elementNumber(const std::string& text, std::size_t count) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = error == std::errc() && stop == end && number < count;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// The entry with that key; the end without one.
auto entryWith(const std::string& key, PropertyValue::Dictionary& entries) {
    return std::ranges::find(entries, key, &PropertyValue::Dictionary::value_type::first);
}

/// The tree with another value at that path; nullopt where the path leads nowhere.
std::optional<PropertyValue> withValueAt(const PropertyValue& root,
                                         std::span<const std::string> path, PropertyValue value) {
    if (path.empty()) return value;
    const auto next = path.subspan(1);
    if (const PropertyValue::Array* array = root.array()) {
        const auto number = elementNumber(path.front(), array->size());
        if (!number) return std::nullopt;
        auto changed = withValueAt((*array)[*number], next, std::move(value));
        if (!changed) return std::nullopt;
        PropertyValue::Array elements = *array;
        elements[*number] = *std::move(changed);
        return PropertyValue(std::move(elements));
    }
    if (!root.dictionary()) return std::nullopt;
    PropertyValue::Dictionary entries = *root.dictionary();
    const auto entry = entryWith(path.front(), entries);
    if (entry == entries.end()) return std::nullopt;
    auto changed = withValueAt(entry->second, next, std::move(value));
    if (!changed) return std::nullopt;
    entry->second = *std::move(changed);
    return PropertyValue(std::move(entries));
}

/// A number or a date that is none, which is not even equal to itself.
bool isNoNumber(const PropertyValue& value) {
    const auto* number = std::get_if<double>(&value.storage());
    const auto* date = std::get_if<PropertyValue::Date>(&value.storage());
    return (number && std::isnan(*number)) || (date && std::isnan(date->secondsSinceReferenceDate));
}

/// Equal with the entries of dictionaries in the same order, and with numbers that are none.
bool isSameTree(const PropertyValue& left, const PropertyValue& right) {
    if (left.array() && right.array())
        return std::ranges::equal(*left.array(), *right.array(), isSameTree);
    if (left.dictionary() && right.dictionary())
        return std::ranges::equal(
            *left.dictionary(), *right.dictionary(), [](const auto& one, const auto& other) {
                return one.first == other.first && isSameTree(one.second, other.second);
            });
    return left == right || (isNoNumber(left) && isNoNumber(right) &&
                             left.storage().index() == right.storage().index());
}

}  // namespace

Result<PropertyListEditor, PropertyListFault> PropertyListEditor::reading(std::string bytes) {
    auto root = PlistCodec().decode(bytes);
    if (!root) return Failure{root.error()};
    const Form form = bytes.starts_with("bplist") ? Form::Binary : Form::Xml;
    PropertyListEditor editor(std::move(bytes), form, *std::move(root));
    if (form == Form::Binary) (void)readBinaryPropertyList(editor.bytes_, &editor.isWhole_);
    return editor;
}

std::optional<PropertyListEditor> PropertyListEditor::startingWith(const PropertyValue& root) {
    auto bytes = writeXmlPropertyList(root);
    if (!bytes) return std::nullopt;
    return PropertyListEditor(*std::move(bytes), Form::Xml, root);
}

PropertyValue PropertyListEditor::at(const PropertyListPath& path) const {
    PropertyValue value = root_;
    for (const std::string& step : path) {
        const PropertyValue::Array* array = value.array();
        const auto number = array ? elementNumber(step, array->size()) : std::nullopt;
        PropertyValue next = number ? (*array)[*number] : value.objectForKey(step);
        value = std::move(next);
    }
    return value;
}

/// What the XML reader reads.
std::string_view PropertyListEditor::text() const {
    const std::string_view bytes = bytes_;
    return bytes.starts_with(utf8Mark) ? bytes.substr(utf8Mark.size()) : bytes;
}

/// Makes the change if the new bytes hold it and nothing else.
PropertyListEditor::Trouble PropertyListEditor::take(const std::optional<PropertyValue>& root,
                                                     const NewText& newText) {
    if (!root) return Refusal::NoSuchPlace;
    if (!isWhole_) return Refusal::LosesValues;
    auto bytes = form_ == Form::Binary ? writeBinaryPropertyList(*root) : newText();
    if (!bytes) return Refusal::NoForm;
    if (form_ == Form::Xml && text().size() < bytes_.size()) bytes->insert(0, utf8Mark);
    const auto read = PlistCodec().decode(*bytes);
    if (!read) return Refusal::NoForm;
    if (!isSameTree(*read, *root)) return Refusal::NotTheSame;
    bytes_ = *std::move(bytes);
    root_ = *root;
    return std::nullopt;
}

PropertyListEditor::Trouble PropertyListEditor::set(const PropertyListPath& dictionary,
                                                    const std::string& key,
                                                    const PropertyValue& value) {
    const PropertyValue before = at(dictionary);
    if (!before.dictionary()) return Refusal::NoSuchPlace;
    PropertyValue::Dictionary entries = *before.dictionary();
    const auto known = entryWith(key, entries);
    if (known == entries.end())
        entries.emplace_back(key, value);
    else if (isSameTree(known->second, value))
        return std::nullopt;
    else
        known->second = value;
    const auto root = withValueAt(root_, dictionary, PropertyValue(std::move(entries)));
    return take(root, [&]() -> std::optional<std::string> {
        const auto container = XmlContainer::find(text(), dictionary);
        if (!container) return std::nullopt;
        const auto entry = container->entry(key);
        return entry ? container->withValue(*entry, value)
                     : container->withChild(container->count(), value, &key);
    });
}

PropertyListEditor::Trouble PropertyListEditor::removeKey(const PropertyListPath& dictionary,
                                                          const std::string& key) {
    const PropertyValue before = at(dictionary);
    if (!before.dictionary()) return Refusal::NoSuchPlace;
    PropertyValue::Dictionary entries = *before.dictionary();
    const auto known = entryWith(key, entries);
    if (known == entries.end()) return std::nullopt;
    entries.erase(known);
    const auto root = withValueAt(root_, dictionary, PropertyValue(std::move(entries)));
    return take(root, [&]() -> std::optional<std::string> {
        const auto container = XmlContainer::find(text(), dictionary);
        if (!container) return std::nullopt;
        return container->withoutEntries(key);
    });
}

PropertyListEditor::Trouble PropertyListEditor::insert(const PropertyListPath& array,
                                                       std::size_t number,
                                                       const PropertyValue& value) {
    return insertElement(array, number, value, [&](const XmlContainer& container) {
        return container.withChild(number, value, nullptr);
    });
}

PropertyListEditor::Trouble PropertyListEditor::restore(const PropertyListPath& array,
                                                        std::size_t number,
                                                        const Removed& removed) {
    if (removed.text.empty() || form_ == Form::Binary) return insert(array, number, removed.value);
    const auto refusal =
        insertElement(array, number, removed.value, [&](const XmlContainer& container) {
            return std::optional(container.withRegion(number, {removed.text, removed.distance}));
        });
    return refusal ? insert(array, number, removed.value) : std::nullopt;
}

PropertyListEditor::Trouble PropertyListEditor::insertElement(const PropertyListPath& array,
                                                              std::size_t number,
                                                              const PropertyValue& value,
                                                              const ChangeOfText& change) {
    const PropertyValue before = at(array);
    if (!before.array()) return Refusal::NoSuchPlace;
    PropertyValue::Array elements = *before.array();
    if (number > elements.size()) return Refusal::NoSuchPlace;
    elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(number), value);
    const auto root = withValueAt(root_, array, PropertyValue(std::move(elements)));
    return take(root, [&]() -> std::optional<std::string> {
        const auto container = XmlContainer::find(text(), array);
        return container ? change(*container) : std::nullopt;
    });
}

Result<PropertyListEditor::Removed, PropertyListEditor::Refusal> PropertyListEditor::remove(
    const PropertyListPath& array, std::size_t number) {
    const PropertyValue before = at(array);
    if (!before.array()) return Failure{Refusal::NoSuchPlace};
    PropertyValue::Array elements = *before.array();
    if (number >= elements.size()) return Failure{Refusal::NoSuchPlace};
    Removed removed{elements[number]};
    elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(number));
    const auto root = withValueAt(root_, array, PropertyValue(std::move(elements)));
    const auto refusal = take(root, [&]() -> std::optional<std::string> {
        const auto container = XmlContainer::find(text(), array);
        if (!container) return std::nullopt;
        XmlContainer::Region region = container->regionOf(number);
        removed.text = std::move(region.text);
        removed.distance = region.distance;
        return container->withoutRegion(number);
    });
    if (refusal) return Failure{*refusal};
    return removed;
}

PropertyListEditor::Trouble PropertyListEditor::move(const PropertyListPath& array,
                                                     std::size_t from, std::size_t to) {
    const PropertyValue before = at(array);
    if (!before.array()) return Refusal::NoSuchPlace;
    if (from >= before.array()->size() || to >= before.array()->size()) return Refusal::NoSuchPlace;
    if (from == to) return std::nullopt;
    PropertyListEditor moved = *this;
    const auto removed = moved.remove(array, from);
    if (!removed) return removed.error();
    if (auto refusal = moved.restore(array, to, {removed->value, removed->text})) return refusal;
    *this = std::move(moved);
    return std::nullopt;
}
