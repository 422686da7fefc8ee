#pragma once

#include "backends/cairo/RegularFile.hpp"
#include "platform/uikit/UIImage.hpp"

#include <optional>

/// The size in the header of a PNG file that is whole: every chunk that the picture needs is there
/// and has its checksum. nullopt when it is not, or is larger than 4096 pixels in a direction.
/// Reads all of the file and decompresses nothing.
std::optional<PixelSize> sizeOfWholePng(RegularFile& file);
