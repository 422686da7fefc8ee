#include "backends/cairo/CairoImageDecoder.hpp"

#include "backends/cairo/PngFile.hpp"

namespace painting {

namespace {

// More than all images of a widget's bundle.
constexpr std::size_t mostKnownWhole = 256;

cairo_status_t readFile(void* closure, unsigned char* data, unsigned int length) noexcept {
    auto* file = static_cast<RegularFile*>(closure);
    return file->read({data, length}) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_READ_ERROR;
}

}  // namespace

std::optional<PixelSize> CairoImageDecoder::probe(const std::string& path) {
    std::optional<RegularFile> file = RegularFile::open(path);
    return file ? sizeIfWhole(*file) : std::nullopt;
}

std::optional<PixelSize> CairoImageDecoder::sizeIfWhole(RegularFile& file) {
    const auto known = whole_.find(file.identity());
    if (known != whole_.end()) return known->second;
    const auto size = sizeOfWholePng(file);
    if (!size) return std::nullopt;
    if (whole_.size() == mostKnownWhole) whole_.clear();
    whole_[file.identity()] = *size;
    return size;
}

std::shared_ptr<const UIBitmap> CairoImageDecoder::decode(const std::string& path) {
    std::optional<RegularFile> file = RegularFile::open(path);
    if (!file) return nullptr;
    if (const auto known = decoded_.find(file->identity()); known != decoded_.end()) {
        if (auto held = known->second.lock()) return held;
    }

    // Which damage the library overlooks depends on its version: libpng 1.6.48 takes a broken end.
    if (!sizeIfWhole(*file) || !file->rewind()) return nullptr;
    CairoSurface surface(cairo_image_surface_create_from_png_stream(readFile, &*file));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;

    auto bitmap = std::make_shared<const CairoBitmap>(std::move(surface));
    if (cairo_surface_status(bitmap->surface()) != CAIRO_STATUS_SUCCESS) return nullptr;
    std::erase_if(decoded_, [](const auto& entry) { return entry.second.expired(); });
    decoded_[file->identity()] = bitmap;
    return bitmap;
}

}  // namespace painting
