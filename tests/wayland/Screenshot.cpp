#include "tests/wayland/Screenshot.hpp"

#include <sstream>
#include <stdexcept>

namespace test {

Screenshot::Screenshot(const std::string& bytes) {
    std::istringstream header(bytes);
    std::string kind;
    int highest = 0;
    header >> kind >> width_ >> height_ >> highest;
    header.get();  // The one blank before the samples.
    const auto begin = static_cast<std::size_t>(header.tellg());
    const auto size = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) * 3;
    if (!header || kind != "P6" || highest != 255 || bytes.size() - begin != size)
        throw std::runtime_error("that is no picture");
    samples_ = bytes.substr(begin);
}

std::uint32_t Screenshot::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0;
    const auto first = static_cast<std::size_t>((y * width_ + x) * 3);
    std::uint32_t color = 0;
    for (std::size_t i = 0; i < 3; ++i)
        color = color << 8 | static_cast<unsigned char>(samples_[first + i]);
    return color;
}

}  // namespace test
