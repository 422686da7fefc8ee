#pragma once

#include "backends/cairo/CairoWindowPicture.hpp"
#include "shells/headless/Answer.hpp"

#include <memory>
#include <string>
#include <vector>

namespace headless {

enum class PaintFiles {
    Written,
    Discarded,  ///< Pictures are painted and dropped, whatever file is named.
};

/// What was painted, in window coordinates, or why nothing was written.
struct Painted {
    std::vector<CGRect> damage;
    Failure failure;
};

/// Keeps the picture of the window: each paint renews what is damaged and nothing else, unless the
/// window's size or the scale is another than before.
class Painter {
 public:
    explicit Painter(PaintFiles files) : files_(files) {}

    /// Paints and writes the whole picture as PNG. `scale` in pixels a point, above 0.
    Painted paint(UIWindow& window, const std::string& file, double scale);

 private:
    bool fits(const UIWindow& window, double scale) const;

    PaintFiles files_;
    std::unique_ptr<CairoWindowPicture> picture_;
};

}  // namespace headless
