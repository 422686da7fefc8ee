#pragma once

#include "backends/cairo/CairoBitmap.hpp"
#include "backends/cairo/RegularFile.hpp"
#include "platform/uikit/UIImage.hpp"

#include <map>
#include <memory>
#include <string>

/// PNG files. An image is looked through for damage when it is first asked for and decoded when it
/// is first painted. While somebody holds the pixels of a file that has not changed, all get the
/// same.
class CairoImageDecoder : public UIImageDecoder {
 public:
    std::optional<PixelSize> probe(const std::string& path) override;
    std::shared_ptr<const UIBitmap> decode(const std::string& path) override;

 private:
    std::optional<PixelSize> sizeIfWhole(RegularFile& file);

    std::map<FileIdentity, PixelSize> whole_;  ///< Files that were found to be undamaged.
    std::map<FileIdentity, std::weak_ptr<const CairoBitmap>> decoded_;
};
