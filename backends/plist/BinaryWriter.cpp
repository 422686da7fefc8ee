#include "backends/plist/Forms.hpp"
#include "platform/foundation/PrintableText.hpp"

#include <bit>
#include <unordered_map>

namespace {

std::string bigEndianBytes(std::uint64_t number, std::size_t bytes) {
    std::string result;
    for (std::size_t i = bytes; i-- > 0;)
        result += static_cast<char>(number >> (8 * i));
    return result;
}

/// The bytes that a number needs, in the sizes of the format.
std::size_t widthOf(std::uint64_t number) {
    if (number <= 0xFF) return 1;
    if (number <= 0xFFFF) return 2;
    return number <= 0xFFFFFFFF ? 4 : 8;
}

std::string integerObject(std::uint64_t number, std::size_t width) {
    return static_cast<char>(0x10 | std::countr_zero(width)) + bigEndianBytes(number, width);
}

/// An object's first byte, and its size behind that where it doesn't fit in.
std::string objectHead(std::uint8_t kind, std::uint64_t size) {
    constexpr std::uint64_t behindIt = 0xF;
    if (size < behindIt) return {static_cast<char>(kind | size)};
    return static_cast<char>(kind | behindIt) + integerObject(size, widthOf(size));
}

/// ASCII as such, every other text as UTF-16. Bytes that are no text stay what they are, as the
/// reader takes them.
std::string textObject(const std::string& text) {
    std::string units;
    bool isAscii = true;
    for (std::string_view rest = text; !rest.empty();) {
        const auto [code, bytes] = firstCharacter(rest);
        if (code == 0xFFFD && bytes == 1) return objectHead(0x50, text.size()) + text;
        isAscii = isAscii && code < 0x80;
        if (code >= 0x10000)
            units += bigEndianBytes(0xD800 + ((code - 0x10000) >> 10), 2) +
                     bigEndianBytes(0xDC00 + (code & 0x3FF), 2);
        else
            units += bigEndianBytes(code, 2);
        rest.remove_prefix(bytes);
    }
    if (isAscii) return objectHead(0x50, text.size()) + text;
    return objectHead(0x60, units.size() / 2) + units;
}

/// Collects the objects of a tree, and writes them. A text that stands in several places is one
/// object.
class BinaryWriter {
 public:
    std::optional<std::string> write(const PropertyValue& root) {
        if (!add(root, 0)) return std::nullopt;
        std::string file = "bplist00";
        const std::size_t referenceBytes = widthOf(objects_.size());
        std::vector<std::size_t> offsets;
        for (const Object& object : objects_) {
            offsets.push_back(file.size());
            file += object.head;
            for (const std::size_t reference : object.references)
                file += bigEndianBytes(reference, referenceBytes);
        }
        const std::size_t table = file.size();
        const std::size_t offsetBytes = widthOf(table);
        for (const std::size_t offset : offsets)
            file += bigEndianBytes(offset, offsetBytes);
        file.append(6, '\0');
        file += static_cast<char>(offsetBytes);
        file += static_cast<char>(referenceBytes);
        constexpr std::uint64_t rootObject = 0;
        for (const std::uint64_t number :
             {std::uint64_t{objects_.size()}, rootObject, static_cast<std::uint64_t>(table)})
            file += bigEndianBytes(number, 8);
        return file;
    }

 private:
    struct Object {
        std::string head;
        std::vector<std::size_t> references{};
    };

    /// The number of the value's object; nullopt for what has no such form.
    std::optional<std::size_t> add(const PropertyValue& value, int depth) {
        return std::visit([&](const auto& each) { return addKind(each, depth); }, value.storage());
    }

    std::size_t addObject(std::string head) {
        objects_.push_back({std::move(head)});
        return objects_.size() - 1;
    }

    std::optional<std::size_t> addKind(std::monostate /*nil*/, int /*depth*/) {
        return std::nullopt;
    }
    std::optional<std::size_t> addKind(bool value, int /*depth*/) {
        return addObject(value ? "\x09" : "\x08");
    }
    std::optional<std::size_t> addKind(std::int64_t value, int /*depth*/) {
        const auto bits = static_cast<std::uint64_t>(value);
        return addObject(integerObject(bits, value < 0 ? 8 : widthOf(bits)));
    }
    /// Eight bytes are signed, so the upper half of the range takes sixteen.
    std::optional<std::size_t> addKind(std::uint64_t value, int /*depth*/) {
        if (value >> 63) return addObject('\x14' + bigEndianBytes(0, 8) + bigEndianBytes(value, 8));
        return addObject(integerObject(value, widthOf(value)));
    }
    std::optional<std::size_t> addKind(double value, int /*depth*/) {
        return addObject('\x23' + bigEndianBytes(std::bit_cast<std::uint64_t>(value), 8));
    }
    std::optional<std::size_t> addKind(PropertyValue::Date date, int /*depth*/) {
        const auto bits = std::bit_cast<std::uint64_t>(date.secondsSinceReferenceDate);
        return addObject('\x33' + bigEndianBytes(bits, 8));
    }

    std::optional<std::size_t> addKind(const std::string& text, int /*depth*/) {
        if (text.find('\0') != std::string::npos) return std::nullopt;
        const auto [known, isNew] = texts_.try_emplace(text, objects_.size());
        if (isNew) addObject(textObject(text));
        return known->second;
    }

    std::optional<std::size_t> addKind(const std::shared_ptr<const PropertyValue::Data>& data,
                                       int /*depth*/) {
        std::string head = objectHead(0x40, data->size());
        head.append(reinterpret_cast<const char*>(data->data()), data->size());
        return addObject(std::move(head));
    }

    std::optional<std::size_t> addKind(const std::shared_ptr<const PropertyValue::Array>& elements,
                                       int depth) {
        const std::size_t number = addObject(objectHead(0xA0, elements->size()));
        for (const PropertyValue& element : *elements)
            if (!refer(number, element, depth)) return std::nullopt;
        return number;
    }

    std::optional<std::size_t> addKind(
        const std::shared_ptr<const PropertyValue::Dictionary>& entries, int depth) {
        if (entries->size() > maximumDictionaryEntries) return std::nullopt;
        const std::size_t number = addObject(objectHead(0xD0, entries->size()));
        for (const auto& [key, value] : *entries)
            if (!refer(number, PropertyValue(key), depth)) return std::nullopt;
        for (const auto& [key, value] : *entries)
            if (!refer(number, value, depth)) return std::nullopt;
        return number;
    }

    /// Adds a value inside the container of that number.
    bool refer(std::size_t container, const PropertyValue& value, int depth) {
        if (depth == NSPropertyList::maximumDepth) return false;
        const auto number = add(value, depth + 1);
        if (number) objects_[container].references.push_back(*number);
        return number.has_value();
    }

    std::vector<Object> objects_;
    std::unordered_map<std::string, std::size_t> texts_;
};

}  // namespace

std::optional<std::string> writeBinaryPropertyList(const PropertyValue& value) {
    return BinaryWriter().write(value);
}
