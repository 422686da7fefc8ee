#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The picture of a window as a screen keeps it: a repaint renews what is damaged and leaves the
/// rest. Starts with nothing painted, every pixel clear. Main thread.
class CairoWindowPicture {
    struct Surface;

 public:
    /// `size` in points, `scale` in pixels a point. nullptr when that makes no pixel, more than
    /// 32,767 in a direction or more than 64 million in all, or when there is no memory for them.
    static std::unique_ptr<CairoWindowPicture> create(const CGSize& size, CGFloat scale);
    /// For create().
    CairoWindowPicture(const CGSize& size, CGFloat scale, std::unique_ptr<Surface> surface);
    ~CairoWindowPicture();

    const CGSize& size() const { return size_; }
    CGFloat scale() const { return scale_; }

    /// Paints the rectangles (window coordinates) afresh, to the next whole pixel outwards.
    void paint(UIWindow& window, const std::vector<CGRect>& damage);
    /// nullopt, or why the file could not be written.
    std::optional<std::string> writePNG(const std::string& path) const;

 private:
    CGSize size_;
    CGFloat scale_;
    std::unique_ptr<Surface> surface_;
};
