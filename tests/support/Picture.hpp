#pragma once

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The pixels of a picture, to compare with another's.
struct Picture {
    int width = 0;   ///< Pixels.
    int height = 0;  ///< Pixels.
    /// Row by row: alpha in the highest byte, below it red, green and blue, premultiplied.
    std::vector<std::uint32_t> pixels;

    Picture(int wide, int high);
    /// Nothing where there is no PNG that can be decoded.
    static std::optional<Picture> read(const std::string& path);
    /// Whether a PNG could be written.
    bool write(const std::string& path) const;

    std::uint32_t& at(int x, int y) { return pixels[index(x, y)]; }
    std::uint32_t at(int x, int y) const { return pixels[index(x, y)]; }
    /// "320 x 200"
    std::string size() const;
    bool operator==(const Picture&) const = default;

 private:
    std::size_t index(int x, int y) const { return std::size_t(y) * std::size_t(width) + x; }
};

/// One of a pixel's four channels, 0 to 255; the number is 0 to 3.
inline int channel(std::uint32_t pixel, int number) {
    return int(pixel >> 8 * number & 0xff);
}

/// By how many levels of 255 two pixels are apart where they are furthest apart.
int levelsApart(std::uint32_t one, std::uint32_t other);
