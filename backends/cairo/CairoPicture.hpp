#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace painting {

/// Lays out a view or a window with its subviews, paints it on a transparent ground and writes that
/// as a PNG file. `scale` is in pixels a point. False when the view has no area or more than 32,767
/// pixels in a direction, or the file cannot be written. Main thread.
bool paintViewToPNG(const std::shared_ptr<UIView>& view, const std::string& path, CGFloat scale);

/// The pixels of a window as a screen would keep them: a repaint renews what is damaged and leaves
/// the rest. Every pixel is transparent at first. Main thread.
///
///     auto picture = CairoWindowPicture::create(window->bounds().size, 2);
///     if (picture) picture->paint(*window, window->takeDamage());
///     if (auto why = picture->writePNG("mixer.png")) ...
class CairoWindowPicture {
    struct Surface;

 public:
    /// `size` in points, `scale` in pixels a point. nullptr when that is less than a pixel, more
    /// than 32,767 pixels in a direction or more than 64 million in all, or when there is no memory
    /// for them.
    static std::unique_ptr<CairoWindowPicture> create(const CGSize& size, CGFloat scale);
    /// For create().
    CairoWindowPicture(const CGSize& size, CGFloat scale, std::unique_ptr<Surface> surface);
    ~CairoWindowPicture();

    const CGSize& size() const { return size_; }
    CGFloat scale() const { return scale_; }

    /// Clears and paints the rectangles (window coordinates), rounded outwards to whole pixels.
    void paint(UIWindow& window, const std::vector<CGRect>& damage);
    /// nullopt, or why the file could not be written.
    std::optional<std::string> writePNG(const std::string& path) const;

 private:
    CGSize size_;
    CGFloat scale_;
    std::unique_ptr<Surface> surface_;
};

}  // namespace painting
