#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

/// What a screen showed, in its own pixels.
class Screenshot {
 public:
    Screenshot() = default;
    /// From the bytes of a binary PPM file. Throws std::runtime_error for anything else.
    explicit Screenshot(const std::string& bytes);

    int width() const { return width_; }
    int height() const { return height_; }
    /// Red, green and blue in the lowest bytes; 0 outside the picture.
    std::uint32_t at(int x, int y) const;
    bool operator==(const Screenshot& other) const = default;

 private:
    int width_ = 0;
    int height_ = 0;
    std::string samples_;  ///< Three bytes a pixel, row by row.
};

}  // namespace test
