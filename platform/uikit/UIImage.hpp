#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/Canvas.hpp"
#include "platform/uikit/UIBitmap.hpp"

#include <memory>
#include <optional>
#include <string>

/// An image file with its variants for finer screens. A file name that ends with "@2x" or "@3x"
/// holds 2 or 3 pixels a point. The variants of "name.png" and of "name@2x.png" are name.png,
/// name@2x.png and name@3x.png beside it; painting takes the smallest that is fine enough for the
/// canvas, decoded at its first paint.
///
///     auto track = UIImage::imageWithContentsOfFile(bundle->pathForResource("track", "png"));
///     if (track) track->resizableImageWithCapInsets({0, 9, 0, 9})->drawInRect(canvas, rect);
///
/// Main thread.
class UIImage {
 public:
    /// nullptr when the path is nil or the file is no readable image, or only a part of one: what
    /// asked for it then looks as it does without.
    static std::shared_ptr<const UIImage> imageWithContentsOfFile(const NSString& path);

    /// The same image, stretched between the insets (points) instead of as a whole.
    std::shared_ptr<const UIImage> resizableImageWithCapInsets(const UIEdgeInsets& insets) const;

    /// The file's name without its folder and type, as it was asked for ("left_track@2x").
    const std::string& name() const { return name_; }
    /// Points.
    CGSize size() const { return size_; }
    const UIEdgeInsets& capInsets() const { return capInsets_; }

    /// What is to be seen of the image, in points of size(), as a canvas of that scale would show
    /// it. Read from the pixels at each call.
    UIImageOutline outline(CGFloat scale) const;

    /// Fills `rect`, stretching between the cap insets. With `tint`, multiplied by it. Draws
    /// nothing if no variant can be decoded any more.
    void drawInRect(Canvas& canvas, const CGRect& rect,
                    const std::optional<UIColor>& tint = std::nullopt) const;

 private:
    struct Variants;

    std::string name_;
    CGSize size_;
    UIEdgeInsets capInsets_;
    std::shared_ptr<Variants> variants_;
};
