#pragma once

#include "platform/uikit/Geometry.hpp"

#include <memory>
#include <optional>
#include <string>

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

/// Decoded pixels, in the backend's own form; only the backend's canvas can draw them.
class UIBitmap {
 public:
    virtual ~UIBitmap() = default;
    virtual PixelSize size() const = 0;
    /// From 0 to 255, for a pixel within the size. A backend that cannot tell says opaque.
    virtual int alphaAt(int x, int y) const {
        (void)x;
        (void)y;
        return 255;
    }
};

/// Reads image files for UIImage. A shell installs the one of its backend. Main thread.
class UIImageDecoder {
 public:
    virtual ~UIImageDecoder() = default;
    /// The size that the file's header tells; nullopt when it is no readable image, is damaged, or
    /// is larger than 4096 pixels in a direction. Decodes nothing.
    virtual std::optional<PixelSize> probe(const std::string& path) = 0;
    /// nullptr when the file cannot be decoded. Pixels of a file that has not changed are shared
    /// among all that hold them.
    virtual std::shared_ptr<const UIBitmap> decode(const std::string& path) = 0;

    static void setDecoder(std::shared_ptr<UIImageDecoder> decoder);
};

/// The shape of an image without the soft shadow around it.
struct UIImageOutline {
    CGRect rect;         ///< The smallest one around all pixels that are at least half opaque.
    CGFloat radius = 0;  ///< Of its corners, as if they were alike: half the side for a circle.
};

/// In pixels of the bitmap. An image without such pixels is taken as a whole.
UIImageOutline outlineOf(const UIBitmap& bitmap);
