#include "backends/plist/Forms.hpp"
#include "platform/foundation/PrintableText.hpp"

#include <algorithm>
#include <bit>

namespace {

// A file is the header, the objects, the table of their offsets, and the trailer.
constexpr std::string_view header = "bplist00";
constexpr std::size_t trailerBytes = 32;

// The upper half of an object's first byte.
enum Kind : std::uint8_t {
    Boolean = 0x0,
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    AsciiText = 0x5,
    Utf16Text = 0x6,
    Uid = 0x8,
    Array = 0xA,
    Dictionary = 0xD,
};
// The lower half is a size, or this where the size follows as an integer object.
constexpr std::uint8_t sizeFollows = 0xF;

/// Of more than eight bytes, the last eight count.
std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

bool isSizeOfNumber(std::uint64_t bytes) {
    return bytes >= 1 && bytes <= 8;
}

/// Eight bytes are signed, fewer and sixteen are not.
PropertyValue integerOf(std::string_view bytes) {
    const std::uint64_t number = bigEndian(bytes);
    const bool isSigned = bytes.size() == 8 || std::in_range<std::int64_t>(number);
    return isSigned ? PropertyValue(static_cast<std::int64_t>(number)) : PropertyValue(number);
}

double realOf(std::string_view bytes) {
    const std::uint64_t bits = bigEndian(bytes);
    return bytes.size() == 4 ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
                             : std::bit_cast<double>(bits);
}

/// Surrogates without their other half are left out.
std::string utf8OfUtf16(std::string_view bytes) {
    std::string text;
    char32_t lead = 0;
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const auto unit = static_cast<char32_t>(bigEndian(bytes.substr(at, 2)));
        const bool isTrail = unit >> 10 == 0xDC00 >> 10;
        if (isTrail && lead != 0)
            appendUtf8(text, 0x10000 + ((lead & 0x3FF) << 10) + (unit & 0x3FF));
        lead = unit >> 10 == 0xD800 >> 10 ? unit : 0;
        if (!isTrail && lead == 0) appendUtf8(text, unit);
    }
    return text;
}

/// How many units of UTF-16 a text of UTF-8 comes to.
std::uint64_t utf16Units(std::string_view text) {
    std::uint64_t units = 0;
    for (const char byte : text) {
        const auto bits = static_cast<unsigned char>(byte);
        if ((bits & 0xC0U) != 0x80) units += bits >= 0xF0 ? 2 : 1;
    }
    return units;
}

class BinaryReader {
 public:
    explicit BinaryReader(std::string_view file) : file_(file) {}

    DecodedPropertyList read() {
        if (!readTrailer()) return refused("the binary list's header or trailer is damaged");
        if (count_ > maximumValues) return refused("more values than can be read");
        objects_.resize(count_);
        if (!readObject(root_, 0))
            return refused("object " + std::to_string(lastRead_) +
                           " of the binary list is damaged, or stands for more than can be read");
        return std::move(objects_[root_].value);
    }

    /// Whether PropertyValue could stand for each value.
    bool isWhole() const { return isWhole_; }

 private:
    enum class State : std::uint8_t { New, Open, Done };
    /// An object, and what it and all that it refers to come to.
    struct Object {
        State state = State::New;
        int depth = 0;  ///< Of containers.
        std::uint64_t values = 1;
        std::uint64_t bytes = 0;
        PropertyValue value;
    };

    static DecodedPropertyList refused(std::string reason) {
        return Failure{PropertyListFault{{}, std::move(reason)}};
    }

    /// Six unused bytes, the sizes of an offset and of a reference, the number of objects, the root
    /// among them, and where the table begins.
    bool readTrailer() {
        if (!file_.starts_with(header) || file_.size() < header.size() + trailerBytes) return false;
        const std::uint64_t end = file_.size() - trailerBytes;
        offsetBytes_ = bigEndian(file_.substr(end + 6, 1));
        referenceBytes_ = bigEndian(file_.substr(end + 7, 1));
        count_ = bigEndian(file_.substr(end + 8, 8));
        root_ = bigEndian(file_.substr(end + 16, 8));
        tableOffset_ = bigEndian(file_.substr(end + 24, 8));
        return isSizeOfNumber(offsetBytes_) && isSizeOfNumber(referenceBytes_) &&
               tableOffset_ >= header.size() && tableOffset_ <= end &&
               count_ <= (end - tableOffset_) / offsetBytes_ && root_ < count_;
    }

    /// The next bytes, which must lie before the table of offsets.
    std::optional<std::string_view> take(std::uint64_t& position, std::uint64_t bytes) const {
        if (bytes > tableOffset_ - position) return std::nullopt;
        position += bytes;
        return file_.substr(position - bytes, bytes);
    }

    /// Each object is read once, however often it is referred to.
    bool readObject(std::uint64_t index, int depth) {
        Object& object = objects_[index];
        if (object.state != State::New) return object.state == State::Done;
        lastRead_ = index;
        object.state = State::Open;
        std::uint64_t position =
            bigEndian(file_.substr(tableOffset_ + index * offsetBytes_, offsetBytes_));
        if (position < header.size() || position >= tableOffset_) return false;
        // The recursion ends with a value inside the innermost container.
        if (depth > NSPropertyList::maximumDepth || !readValue(object, position, depth))
            return false;
        object.state = State::Done;
        return true;
    }

    bool readValue(Object& object, std::uint64_t position, int depth) {
        const auto marker = static_cast<std::uint8_t>(file_[position++]);
        const int low = marker & 0xF;
        switch (marker >> 4) {
            case Boolean:
                object.value = PropertyValue(low == 9);
                return low == 8 || low == 9;
            case Uid:
                // No kind of value stands for it: nil.
                isWhole_ = false;
                return low <= 7 && take(position, low + 1);
            case Integer:
                return low <= 4 && readNumber(object, marker, take(position, 1U << low));
            case Real:
            case Date:
                if (low != 3 && (low != 2 || marker >> 4 == Date)) return false;
                return readNumber(object, marker, take(position, 1U << low));
            case Data:
            case AsciiText:
            case Utf16Text:
                return readBytes(object, marker, position);
            case Array:
            case Dictionary:
                return readContainer(object, marker, position, depth);
            default:
                return false;
        }
    }

    bool readNumber(Object& object, std::uint8_t marker, std::optional<std::string_view> bytes) {
        if (!bytes) return false;
        object.bytes = bytes->size();
        const bool isWide = bytes->size() == 16;
        if (isWide && bytes->substr(0, 8).find_first_not_of('\0') != std::string_view::npos)
            isWhole_ = false;
        if (marker >> 4 == Integer)
            object.value = integerOf(*bytes);
        else if (marker >> 4 == Real)
            object.value = PropertyValue(realOf(*bytes));
        else
            object.value = PropertyValue(PropertyValue::Date{realOf(*bytes)});
        return true;
    }

    /// The size of an object of any size; not larger than the file, so that products of it with a
    /// few bytes don't overflow.
    std::optional<std::uint64_t> takeSize(std::uint8_t marker, std::uint64_t& position) const {
        std::uint64_t size = marker & 0xF;
        if (size == sizeFollows) {
            const auto kind = take(position, 1);
            const auto sizeMarker =
                kind ? static_cast<std::uint8_t>(kind->front()) : std::uint8_t{0};
            const std::uint64_t sizeBytes = 1U << (sizeMarker & 0xF);
            if (sizeMarker >> 4 != Integer || !isSizeOfNumber(sizeBytes)) return std::nullopt;
            const auto bytes = take(position, sizeBytes);
            if (!bytes) return std::nullopt;
            size = bigEndian(*bytes);
        }
        return size <= file_.size() ? std::optional(size) : std::nullopt;
    }

    bool readBytes(Object& object, std::uint8_t marker, std::uint64_t position) {
        const auto size = takeSize(marker, position);
        const std::uint64_t width = marker >> 4 == Utf16Text ? 2 : 1;
        const auto bytes = size ? take(position, *size * width) : std::nullopt;
        if (!bytes) return false;
        object.bytes = bytes->size();
        if (marker >> 4 == Data) {
            const auto* first = reinterpret_cast<const std::byte*>(bytes->data());
            object.value = PropertyValue(PropertyValue::Data(first, first + bytes->size()));
            return true;
        }
        std::string text = width == 2 ? utf8OfUtf16(*bytes) : std::string(*bytes);
        if (text.find('\0') != std::string::npos) return false;
        if (width == 2 && utf16Units(text) != *size) isWhole_ = false;
        object.value = PropertyValue(std::move(text));
        return true;
    }

    bool readContainer(Object& object, std::uint8_t marker, std::uint64_t position, int depth) {
        const auto size = takeSize(marker, position);
        const bool isDictionary = marker >> 4 == Dictionary;
        if (!size || (isDictionary && *size > maximumDictionaryEntries)) return false;
        const auto references = take(position, (isDictionary ? 2 : 1) * *size * referenceBytes_);
        if (!references) return false;
        object.depth = 1;
        PropertyValue::Array values;
        for (std::uint64_t at = 0; at < references->size(); at += referenceBytes_) {
            const std::uint64_t index = bigEndian(references->substr(at, referenceBytes_));
            if (index >= objects_.size() || !readObject(index, depth + 1) ||
                !include(object, objects_[index]))
                return false;
            values.push_back(objects_[index].value);
        }
        if (!isDictionary) object.value = PropertyValue(std::move(values));
        return !isDictionary || fillDictionary(object, values);
    }

    /// Keys come first, then as many values. Entries without a value are left out.
    static bool fillDictionary(Object& object, PropertyValue::Array& keysAndValues) {
        const std::size_t size = keysAndValues.size() / 2;
        PropertyValue::Dictionary entries;
        for (std::size_t i = 0; i < size; ++i) {
            auto key = keysAndValues[i].string();
            if (!key) return false;
            PropertyValue& value = keysAndValues[size + i];
            if (!value.isNil()) entries.emplace_back(*std::move(key), std::move(value));
        }
        object.value = PropertyValue(std::move(entries));
        return true;
    }

    /// Whether the whole stays within the limits with that part.
    bool include(Object& whole, const Object& part) {
        whole.values += part.values;
        whole.bytes += part.bytes;
        whole.depth = std::max(whole.depth, part.depth + 1);
        return whole.values <= maximumValues && whole.bytes <= maximumExpandedBytes &&
               whole.depth <= NSPropertyList::maximumDepth && ++references_ <= maximumValues;
    }

    std::string_view file_;
    std::uint64_t tableOffset_ = 0;
    std::uint64_t offsetBytes_ = 0;
    std::uint64_t referenceBytes_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t root_ = 0;
    std::vector<Object> objects_;
    std::uint64_t references_ = 0;  ///< Followed so far.
    std::uint64_t lastRead_ = 0;
    bool isWhole_ = true;
};

}  // namespace

DecodedPropertyList readBinaryPropertyList(std::string_view file, bool* isWhole) {
    BinaryReader reader(file);
    DecodedPropertyList decoded = reader.read();
    if (isWhole) *isWhole = reader.isWhole();
    return decoded;
}
