#pragma once

#include <gtest/gtest.h>

#include <compare>
#include <string>
#include <vector>

/// A release of the rasteriser, Cairo, whose versions between two releases are counted as the
/// newer one's: 1.17.4 places glyphs as 1.18 does.
struct RasteriserRelease {
    int major = 0;
    int minor = 0;
    /// From cairo_version().
    static RasteriserRelease ofVersion(int version);
    auto operator<=>(const RasteriserRelease&) const = default;
};

/// The references of one folder, as one release of the rasteriser sees them. NAME.png is what the
/// first release paints, NAME.cairo-1.18.png what 1.18 and every later one paint up to the next
/// variant. There is a variant only where glyphs fall otherwise.
class GoldenVariants {
 public:
    GoldenVariants(std::string folder, RasteriserRelease release);

    /// The file that this release's picture is compared with: the newest that is not newer than it.
    std::string reference(const std::string& name) const;
    /// The file that it would be compared with if the release had none of its own.
    std::string olderReference(const std::string& name) const;
    /// The file that this release's picture is blessed as: NAME.png for the first release.
    std::string ownReference(const std::string& name) const;

    /// The names of all files in the folder that are a variant, sorted.
    static std::vector<std::string> variantsIn(const std::string& folder);
    /// "NAME.png" for "NAME.cairo-1.18.png".
    static std::string unmarked(const std::string& variant);

 private:
    std::string newestBefore(const std::string& name, bool orOwn) const;

    std::string folder_;
    RasteriserRelease release_;
};

/// Whether two pictures (PNG files) are the same but for where glyphs fall in the pixels. Every
/// difference then is that of an edge which moved by half a pixel or so, and no part of a picture
/// has another colour, size or place, or another letter.
testing::AssertionResult differAtGlyphEdgesAlone(const std::string& one, const std::string& other);
