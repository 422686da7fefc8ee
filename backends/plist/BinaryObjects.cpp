#include "backends/plist/BinaryObjects.hpp"

#include "backends/plist/BinaryForm.hpp"
#include "backends/plist/Limits.hpp"

using binaryform::bigEndian;
using binaryform::header;
using binaryform::trailerBytes;

namespace {

// Of the trailer, at the end of the file. Its numbers are big-endian.
constexpr std::uint64_t offsetSizeAt = 6;
constexpr std::uint64_t referenceSizeAt = 7;
constexpr std::uint64_t countAt = 8;
constexpr std::uint64_t rootAt = 16;
constexpr std::uint64_t tableOffsetAt = 24;

// The upper half of an object's first byte.
enum Kind : std::uint8_t {
    Singleton = 0x0,
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
// The lower half is a size, or this when the size follows as an integer object.
constexpr std::uint8_t sizeFollows = 0xF;

/// Whether a character of that many bytes is zero. The library takes its end for the text's end in
/// one place and not in another, and gives up the program when the two differ in a key.
bool hasZeroCharacter(std::string_view text, std::size_t characterBytes) {
    while (!text.empty()) {
        if (bigEndian(text.substr(0, characterBytes)) == 0) return true;
        text.remove_prefix(characterBytes);
    }
    return false;
}

bool isSizeOfNumber(std::uint64_t bytes) {
    return bytes >= 1 && bytes <= 8;
}

}  // namespace

std::optional<BinaryObjects> BinaryObjects::in(std::string_view file) {
    if (!file.starts_with(header) || file.size() < header.size() + trailerBytes) {
        return std::nullopt;
    }
    const std::string_view body = file.substr(0, file.size() - trailerBytes);
    const std::string_view trailer = file.substr(body.size());
    const std::uint64_t tableOffset = bigEndian(trailer.substr(tableOffsetAt, 8));
    BinaryObjects objects;
    objects.offsetBytes_ = bigEndian(trailer.substr(offsetSizeAt, 1));
    objects.referenceBytes_ = bigEndian(trailer.substr(referenceSizeAt, 1));
    objects.count_ = bigEndian(trailer.substr(countAt, 8));
    objects.root_ = bigEndian(trailer.substr(rootAt, 8));
    if (!isSizeOfNumber(objects.offsetBytes_) || !isSizeOfNumber(objects.referenceBytes_) ||
        tableOffset < header.size() || tableOffset > body.size() ||
        objects.count_ > (body.size() - tableOffset) / objects.offsetBytes_ ||
        objects.root_ >= objects.count_) {
        return std::nullopt;
    }
    objects.objects_ = body.substr(0, tableOffset);
    objects.table_ = body.substr(tableOffset);
    return objects;
}

std::optional<BinaryObject> BinaryObjects::object(std::uint64_t index) const {
    const std::uint64_t offset = bigEndian(table_.substr(index * offsetBytes_, offsetBytes_));
    if (offset < header.size() || offset >= objects_.size()) return std::nullopt;
    const auto marker = static_cast<std::uint8_t>(objects_[offset]);
    const std::uint64_t low = marker & 0xF;
    const std::uint64_t start = offset + 1;
    switch (marker >> 4) {
        case Singleton:
            return plain(start, 0);
        case Integer:
            return low <= 4 ? plain(start, 1ULL << low) : std::nullopt;
        case Real:
            return low == 2 || low == 3 ? plain(start, 1ULL << low) : std::nullopt;
        case Date:
            return low == 3 ? plain(start, 8) : std::nullopt;
        case Uid:
            return low <= 7 ? plain(start, low + 1) : std::nullopt;
        default:
            return sized(offset);
    }
}

/// An object of this payload, if it lies inside the file.
std::optional<BinaryObject> BinaryObjects::plain(std::uint64_t start,
                                                 std::uint64_t payloadBytes) const {
    if (payloadBytes > objects_.size() - start) return std::nullopt;
    return BinaryObject{false, payloadBytes, 0, start};
}

std::optional<BinaryObject> BinaryObjects::text(std::uint64_t start, std::uint64_t characters,
                                                std::uint64_t characterBytes) const {
    const auto object = plain(start, characters * characterBytes);
    if (!object) return std::nullopt;
    const std::string_view bytes = objects_.substr(start, object->payloadBytes);
    return hasZeroCharacter(bytes, characterBytes) ? std::nullopt : object;
}

std::optional<BinaryObject> BinaryObjects::sized(std::uint64_t markerOffset) const {
    const auto marker = static_cast<std::uint8_t>(objects_[markerOffset]);
    std::uint64_t size = marker & 0xF;
    std::uint64_t start = markerOffset + 1;
    if (size == sizeFollows) {
        const auto sizeMarker =
            start < objects_.size() ? static_cast<std::uint8_t>(objects_[start]) : std::uint8_t{0};
        const std::uint64_t sizeBytes = 1ULL << (sizeMarker & 0xF);
        if (sizeMarker >> 4 != Integer || !isSizeOfNumber(sizeBytes)) return std::nullopt;
        if (!plain(++start, sizeBytes)) return std::nullopt;
        size = bigEndian(objects_.substr(start, sizeBytes));
        start += sizeBytes;
    }
    // Nothing is larger than the file, and so no product below overflows.
    if (size > objects_.size()) return std::nullopt;
    const bool isDictionary = marker >> 4 == Dictionary;
    if (isDictionary && size > maximumDictionaryEntries) return std::nullopt;
    const std::uint64_t references = isDictionary ? 2 * size : size;
    switch (marker >> 4) {
        case Data:
            return plain(start, size);
        case AsciiText:
            return text(start, size, 1);
        case Utf16Text:
            return text(start, size, 2);
        case Array:
        case Dictionary:
            if (!plain(start, references * referenceBytes_)) return std::nullopt;
            return BinaryObject{true, 0, references, start};
        default:
            return std::nullopt;
    }
}

std::optional<std::uint64_t> BinaryObjects::reference(const BinaryObject& object,
                                                      std::uint64_t number) const {
    const std::uint64_t index = bigEndian(
        objects_.substr(object.firstReference + number * referenceBytes_, referenceBytes_));
    return index < count_ ? std::optional(index) : std::nullopt;
}
