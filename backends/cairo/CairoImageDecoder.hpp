#pragma once

#include "backends/cairo/CairoBitmap.hpp"
#include "backends/cairo/PngFile.hpp"
#include "platform/uikit/UIImage.hpp"

#include <map>
#include <memory>
#include <string>

namespace painting {

/// Decodes PNG files. A file is checked for damage when it is first requested and decoded when it
/// is first painted. While its pixels are in use and it has not changed, all users share them.
class CairoImageDecoder : public UIImageDecoder {
 public:
    std::optional<PixelSize> probe(const std::string& path) override;
    std::shared_ptr<const UIBitmap> decode(const std::string& path) override;

 private:
    std::optional<PixelSize> sizeIfWhole(RegularFile& file);

    std::map<FileIdentity, PixelSize> whole_;  ///< Files that were found to be undamaged.
    std::map<FileIdentity, std::weak_ptr<const CairoBitmap>> decoded_;
};

}  // namespace painting
