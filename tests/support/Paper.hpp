#pragma once

#include "backends/cairo/CairoBitmap.hpp"
#include "backends/cairo/CairoCanvas.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

/// One pixel, not premultiplied, 0 to 255.
struct Pixel {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 0;
    bool operator==(const Pixel&) const = default;
};
inline constexpr Pixel redPixel{255, 0, 0, 255};
std::ostream& operator<<(std::ostream& stream, const Pixel& pixel);

/// An image in memory with a canvas on it.
class Paper {
 public:
    /// Points; transparent at first.
    Paper(int width, int height, double scale = 1);

    painting::CairoCanvas& canvas() { return *canvas_; }
    /// Ends the painting so far and gives a canvas at the paper's origin.
    painting::CairoCanvas& freshCanvas();
    cairo_t* context() { return context_.get(); }
    cairo_surface_t* surface() { return surface_.get(); }

    int pixelsWide() const;
    int pixelsHigh() const;
    Pixel at(int x, int y) const;
    int alphaAt(int x, int y) const { return at(x, y).alpha; }
    /// Pixels in these columns (all of them by default) that are not transparent.
    int inked(int fromColumn = 0, int toColumn = 1 << 20) const;
    /// The first and the last row or column with a pixel that is not transparent; -1 for none.
    int firstInkedRow() const;
    int lastInkedRow() const;
    int firstInkedColumn() const;
    int lastInkedColumn() const;

 private:
    std::uint32_t premultiplied(int x, int y) const;
    bool rowInked(int y) const;
    bool columnInked(int x) const;

    double scale_;
    painting::CairoSurface surface_;
    painting::CairoContext context_;
    std::unique_ptr<painting::CairoCanvas> canvas_;
};

/// A bitmap whose pixels (0xaarrggbb, premultiplied) the function gives.
painting::CairoBitmap bitmapOf(int width, int height,
                               const std::function<std::uint32_t(int, int)>& pixel);

/// A folder of its own for one test, empty at first and gone with it.
class TemporaryFolder {
 public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();
    std::string path(const std::string& name) const { return path_ + "/" + name; }

 private:
    std::string path_;
};
