#pragma once

#include "backends/cairo/RegularFile.hpp"
#include "platform/uikit/UIImage.hpp"

#include <optional>

/// The size in the header of a PNG file, read from its beginning; nullopt when that is none, or is
/// larger than 4096 pixels in a direction.
std::optional<PixelSize> sizeInPngHeader(RegularFile& file);

/// The same of a file that is whole besides: every chunk that the picture needs is there and has
/// its checksum. Reads all of the file and decompresses nothing.
std::optional<PixelSize> sizeOfWholePng(RegularFile& file);
