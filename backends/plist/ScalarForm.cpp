#include "backends/plist/ScalarForm.hpp"

#include "backends/plist/BinaryForm.hpp"

#include <array>
#include <bit>
#include <cstdlib>

using binaryform::bigEndian;
using binaryform::header;
using binaryform::trailerBytes;

namespace {

constexpr unsigned char integerMarker = 0x10;  // The low half is the binary logarithm of the bytes.
constexpr unsigned char integer8Bytes = 0x13;
constexpr unsigned char integer16Bytes = 0x14;
constexpr unsigned char dateMarker = 0x33;

struct Scalar {
    unsigned char marker = 0;
    std::uint64_t high = 0;  ///< The upper 64 bits of 16 bytes, else 0.
    std::uint64_t low = 0;
};

std::string bigEndianBytes(std::uint64_t number) {
    std::string bytes(8, '\0');
    for (std::size_t i = 0; i < 8; ++i)
        bytes[i] = static_cast<char>(number >> (56 - 8 * i));
    return bytes;
}

Scalar scalarOfNode(plist_t node) {
    char* raw = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node, &raw, &length);
    const std::unique_ptr<char, decltype(&std::free)> owner(raw, &std::free);
    if (!raw || length < header.size() + 2 + trailerBytes) return {};
    const std::string_view object(raw + header.size(), length - header.size() - trailerBytes - 1);
    Scalar scalar{static_cast<unsigned char>(object[0])};
    const std::string_view bytes = object.substr(1);
    if (bytes.size() == 16) scalar.high = bigEndian(bytes.substr(0, 8));
    scalar.low = bigEndian(bytes.size() == 16 ? bytes.substr(8) : bytes);
    return scalar;
}

PlistNode nodeOfScalar(unsigned char marker, const std::string& bytes) {
    std::string file(header);
    file += static_cast<char>(marker);
    file += bytes;
    const std::size_t tableOffset = file.size();
    file += static_cast<char>(header.size());       // The table: where the object begins.
    file += std::string(6, '\0') + "\x01\x01";      // One byte an offset, one byte a reference.
    file += bigEndianBytes(1) + bigEndianBytes(0);  // One object, and that is the root.
    file += bigEndianBytes(tableOffset);
    plist_t node = nullptr;
    plist_from_bin(file.data(), static_cast<std::uint32_t>(file.size()), &node);
    return PlistNode(node);
}

}  // namespace

PropertyValue integerOfNode(plist_t node) {
    std::uint64_t plain = 0;
    plist_get_uint_val(node, &plain);
    // Below that there is nothing to tell apart, and the binary form takes its time.
    if (std::in_range<std::int64_t>(plain)) return PropertyValue(static_cast<std::int64_t>(plain));
    const Scalar scalar = scalarOfNode(node);
    if ((scalar.marker & 0xF0) != integerMarker || scalar.high != 0) return {};
    const auto asSigned = static_cast<std::int64_t>(scalar.low);
    const bool isUnsigned = scalar.marker == integer16Bytes && asSigned < 0;
    return isUnsigned ? PropertyValue(scalar.low) : PropertyValue(asSigned);
}

PropertyValue dateOfNode(plist_t node) {
    const Scalar scalar = scalarOfNode(node);
    if (scalar.marker != dateMarker) return {};
    return PropertyValue(PropertyValue::Date{std::bit_cast<double>(scalar.low)});
}

PlistNode nodeOfInteger(std::int64_t value) {
    return nodeOfScalar(integer8Bytes, bigEndianBytes(static_cast<std::uint64_t>(value)));
}

PlistNode nodeOfInteger(std::uint64_t value) {
    if (std::in_range<std::int64_t>(value)) return nodeOfInteger(static_cast<std::int64_t>(value));
    return nodeOfScalar(integer16Bytes, bigEndianBytes(0) + bigEndianBytes(value));
}

PlistNode nodeOfDate(PropertyValue::Date date) {
    const auto bits = std::bit_cast<std::uint64_t>(date.secondsSinceReferenceDate);
    return nodeOfScalar(dateMarker, bigEndianBytes(bits));
}
