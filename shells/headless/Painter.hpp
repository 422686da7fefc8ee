#pragma once

#include "backends/cairo/CairoPicture.hpp"
#include "platform/foundation/Result.hpp"

#include <memory>
#include <string>
#include <vector>

namespace headless {

enum class PaintFiles {
    Written,
    Discarded,  ///< Pictures are painted and dropped, whatever file is named.
};

/// Keeps a picture of the window. Each paint updates only the damage, unless the window's size or
/// the scale has changed.
class Painter {
 public:
    explicit Painter(PaintFiles files) : files_(files) {}

    /// Paints and writes the whole picture as PNG. `scale` in pixels a point, above 0. Returns the
    /// rectangles painted, in window coordinates.
    Result<std::vector<CGRect>> paint(UIWindow& window, const std::string& file, double scale);

 private:
    bool fits(const UIWindow& window, double scale) const;

    PaintFiles files_;
    std::unique_ptr<painting::CairoWindowPicture> picture_;
};

}  // namespace headless
