#include "platform/uikit/UIImage.hpp"

#include "platform/uikit/NineSlice.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace {
/// What a file name ends with, by pixels a point.
constexpr std::array<std::string_view, 3> suffixes = {"", "@2x", "@3x"};
constexpr int finest = suffixes.size();

std::string_view suffixFor(int pixelsPerPoint) {
    return suffixes[static_cast<std::size_t>(pixelsPerPoint - 1)];
}

std::shared_ptr<UIImageDecoder>& sharedDecoder() {
    static std::shared_ptr<UIImageDecoder> decoder;
    return decoder;
}

/// "dir/left_track@2x.png": "dir/left_track", 2, ".png".
struct FileName {
    std::string base;
    int pixelsPerPoint = 1;
    std::string type;
    std::string stem;
};

FileName parsed(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = path.rfind('.');
    const std::size_t end = dot == std::string::npos || dot <= start ? path.size() : dot;
    FileName name{path.substr(0, end), 1, path.substr(end), path.substr(start, end - start)};
    for (int scale = 2; scale <= finest; ++scale) {
        const std::string_view suffix = suffixFor(scale);
        if (!name.stem.ends_with(suffix)) continue;
        name.base.erase(name.base.size() - suffix.size());
        name.pixelsPerPoint = scale;
        break;
    }
    return name;
}

CGFloat usableInset(CGFloat inset) {
    return std::isfinite(inset) && inset > 0 ? inset : 0;
}
}  // namespace

void UIImageDecoder::setDecoder(std::shared_ptr<UIImageDecoder> decoder) {
    sharedDecoder() = std::move(decoder);
}

/// The files of one image, by pixels a point, as far as painting has needed them.
struct UIImage::Variants {
    struct Variant {
        bool decoded = false;
        std::shared_ptr<const UIBitmap> bitmap;
    };

    explicit Variants(FileName asked) : name(std::move(asked)) {}

    std::string path(int pixelsPerPoint) const {
        std::string path = name.base;
        path += suffixFor(pixelsPerPoint);
        return path += name.type;
    }

    /// nullptr when there is no such file or it cannot be decoded; that is not tried again.
    const UIBitmap* bitmap(int pixelsPerPoint) {
        const auto decoder = sharedDecoder();
        Variant& variant = variants[static_cast<std::size_t>(pixelsPerPoint - 1)];
        if (variant.decoded || !decoder) return variant.bitmap.get();
        variant.decoded = true;
        const std::string file = path(pixelsPerPoint);
        if (decoder->probe(file)) variant.bitmap = decoder->decode(file);
        return variant.bitmap.get();
    }

    /// The smallest that is fine enough, else the finest there is.
    const UIBitmap* bitmapForScale(CGFloat scale) {
        int enough = 1;
        while (enough < finest && static_cast<CGFloat>(enough) < scale)
            ++enough;
        for (int candidate = enough; candidate <= finest; ++candidate)
            if (const UIBitmap* found = bitmap(candidate)) return found;
        for (int candidate = enough - 1; candidate >= 1; --candidate)
            if (const UIBitmap* found = bitmap(candidate)) return found;
        return nullptr;
    }

    FileName name;
    std::array<Variant, finest> variants;
};

std::shared_ptr<const UIImage> UIImage::imageWithContentsOfFile(const NSString& path) {
    const auto decoder = sharedDecoder();
    if (!path || !decoder) return nullptr;
    const auto pixels = decoder->probe(*path);
    if (!pixels || pixels->width <= 0 || pixels->height <= 0) return nullptr;
    FileName name = parsed(*path);
    auto image = std::make_shared<UIImage>();
    const auto pixelsPerPoint = static_cast<CGFloat>(name.pixelsPerPoint);
    image->size_ = {static_cast<CGFloat>(pixels->width) / pixelsPerPoint,
                    static_cast<CGFloat>(pixels->height) / pixelsPerPoint};
    image->name_ = name.stem;
    image->variants_ = std::make_shared<Variants>(std::move(name));
    return image;
}

std::shared_ptr<const UIImage> UIImage::resizableImageWithCapInsets(
    const UIEdgeInsets& insets) const {
    auto image = std::make_shared<UIImage>(*this);
    image->capInsets_ = {usableInset(insets.top), usableInset(insets.left),
                         usableInset(insets.bottom), usableInset(insets.right)};
    return image;
}

UIImageOutline UIImage::outline(CGFloat scale) const {
    const UIBitmap* bitmap = variants_ ? variants_->bitmapForScale(scale) : nullptr;
    if (!bitmap) return {{{}, size_}};
    const UIImageOutline pixels = outlineOf(*bitmap);
    const CGFloat across = size_.width / static_cast<CGFloat>(bitmap->size().width);
    const CGFloat down = size_.height / static_cast<CGFloat>(bitmap->size().height);
    return {CGRectMake(pixels.rect.origin.x * across, pixels.rect.origin.y * down,
                       pixels.rect.size.width * across, pixels.rect.size.height * down),
            pixels.radius * std::min(across, down)};
}

void UIImage::drawInRect(Canvas& canvas, const CGRect& rect,
                         const std::optional<UIColor>& tint) const {
    if (CGRectIsEmpty(rect) || !variants_) return;
    const UIBitmap* bitmap = variants_->bitmapForScale(canvas.scale());
    if (!bitmap) return;
    const bool changesNothing = !tint || *tint == UIColor::whiteColor();
    const auto multiply = changesNothing ? std::nullopt : tint;
    if (capInsets_ == UIEdgeInsets{}) {
        const PixelSize pixels = bitmap->size();
        const CGSize whole = {static_cast<CGFloat>(pixels.width),
                              static_cast<CGFloat>(pixels.height)};
        canvas.drawBitmap(*bitmap, {{}, whole}, rect, multiply);
        return;
    }
    for (const NineSlice::Piece& piece :
         NineSlice{size_, capInsets_, bitmap->size(), canvas.scale()}.pieces(rect))
        canvas.drawBitmap(*bitmap, piece.source, piece.target, multiply);
}
