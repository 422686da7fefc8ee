#include "backends/cairo/CairoImageDecoder.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace {

constexpr std::uint32_t largestSide = 4096;  // pixels
// Twice the pixels of the largest image: compression that makes it larger still is an attack.
constexpr std::int64_t largestFile = std::int64_t(largestSide) * largestSide * 4 * 2;

// The signature, then a chunk of 13 bytes named IHDR, which begins with the two sizes.
constexpr std::array<unsigned char, 16> beginning = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n',
                                                     0,    0,   0,   13,  'I',  'H',  'D',  'R'};
constexpr std::size_t headerBytes = beginning.size() + 8;

std::uint32_t bigEndian(std::span<const unsigned char, 4> bytes) {
    return std::uint32_t(bytes[0]) << 24 | std::uint32_t(bytes[1]) << 16 |
           std::uint32_t(bytes[2]) << 8 | bytes[3];
}

std::optional<PixelSize> sizeInHeader(RegularFile& file) {
    std::array<unsigned char, headerBytes> header;
    if (file.identity().bytes > largestFile || !file.read(header)) return std::nullopt;
    if (!std::equal(beginning.begin(), beginning.end(), header.begin())) return std::nullopt;

    const std::span<const unsigned char, headerBytes> bytes(header);
    const std::uint32_t width = bigEndian(bytes.subspan<16, 4>());
    const std::uint32_t height = bigEndian(bytes.subspan<20, 4>());
    if (width < 1 || width > largestSide || height < 1 || height > largestSide) return std::nullopt;
    return PixelSize{int(width), int(height)};
}

cairo_status_t readFile(void* closure, unsigned char* data, unsigned int length) noexcept {
    auto* file = static_cast<RegularFile*>(closure);
    return file->read({data, length}) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_READ_ERROR;
}

}  // namespace

std::optional<PixelSize> CairoImageDecoder::probe(const std::string& path) {
    std::optional<RegularFile> file = RegularFile::open(path);
    return file ? sizeInHeader(*file) : std::nullopt;
}

std::shared_ptr<const UIBitmap> CairoImageDecoder::decode(const std::string& path) {
    std::optional<RegularFile> file = RegularFile::open(path);
    if (!file) return nullptr;
    if (const auto known = decoded_.find(file->identity()); known != decoded_.end()) {
        if (auto held = known->second.lock()) return held;
    }

    if (!sizeInHeader(*file) || !file->rewind()) return nullptr;
    CairoSurface surface(cairo_image_surface_create_from_png_stream(readFile, &*file));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;

    auto bitmap = std::make_shared<const CairoBitmap>(std::move(surface));
    if (cairo_surface_status(bitmap->surface()) != CAIRO_STATUS_SUCCESS) return nullptr;
    std::erase_if(decoded_, [](const auto& entry) { return entry.second.expired(); });
    decoded_[file->identity()] = bitmap;
    return bitmap;
}
