#pragma once

#include <cstdint>
#include <string_view>

/// What the binary form's readers and writers share: a file is this header, the objects, the table
/// of where they begin, and the trailer.
namespace binaryform {

inline constexpr std::string_view header = "bplist00";
inline constexpr std::size_t trailerBytes = 32;

/// At most eight bytes of it count.
inline std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

}  // namespace binaryform
