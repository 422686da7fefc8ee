#include "tests/support/Golden.hpp"

#include "backends/cairo/Handles.hpp"
#include "tests/support/GoldenVariants.hpp"
#include "tests/support/Picture.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr std::uint32_t differingColor = 0xffff0000;

// Read back after writing, as the reference is: alpha is stored unmultiplied and rounded.
std::optional<Picture> throughFile(cairo_surface_t* picture, const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    if (cairo_surface_write_to_png(picture, path.c_str()) != CAIRO_STATUS_SUCCESS) return {};
    return Picture::read(path);
}

std::uint32_t faded(std::uint32_t pixel) {
    const auto gray = std::uint32_t(channel(pixel, 2) / 8 + channel(pixel, 1) / 8 + 0x20);
    return 0xff000000 | gray << 16 | gray << 8 | gray;
}

struct Difference {
    long pixels = 0;
    int largest = 0;
    Picture picture;
};

Difference difference(const Picture& actual, const Picture& expected, int levels) {
    Difference result{.picture = actual};
    for (std::size_t i = 0; i < actual.pixels.size(); ++i) {
        const int apart = levelsApart(actual.pixels[i], expected.pixels[i]);
        result.largest = std::max(result.largest, apart);
        result.pixels += apart > levels ? 1 : 0;
        result.picture.pixels[i] = apart > levels ? differingColor : faded(actual.pixels[i]);
    }
    return result;
}

testing::AssertionResult same(const Picture& actual, const std::string& referencePath,
                              const GoldenTolerance& tolerance, const std::string& diffPath = {}) {
    const std::optional<Picture> expected = Picture::read(referencePath);
    if (!expected) return testing::AssertionFailure() << "no reference " << referencePath;
    if (actual.size() != expected->size()) {
        return testing::AssertionFailure() << actual.size() << " pixels are painted, "
                                           << referencePath << " has " << expected->size();
    }
    const Difference found = difference(actual, *expected, tolerance.levels);
    const auto all = double(actual.pixels.size());
    if (double(found.pixels) <= tolerance.differingPart * all) return testing::AssertionSuccess();
    if (!diffPath.empty()) found.picture.write(diffPath);
    return testing::AssertionFailure()
           << found.pixels << " of " << all << " pixels differ by more than " << tolerance.levels
           << " levels from " << referencePath << ", by up to " << found.largest << "; see "
           << diffPath;
}

// A reference that shows this very picture stays the file that it is: releases compress otherwise.
testing::AssertionResult blessedAs(const std::string& to, const Picture& actual) {
    if (Picture::read(to) == actual) return testing::AssertionSuccess();
    if (!actual.write(to)) return testing::AssertionFailure() << "cannot write " << to;
    return testing::AssertionSuccess() << "blessed " << to;
}

testing::AssertionResult bless(const GoldenVariants& variants, const std::string& name,
                               const Picture& actual, const GoldenTolerance& tolerance) {
    const std::string own = variants.ownReference(name);
    const std::string older = variants.olderReference(name);
    if (own == older || !same(actual, older, tolerance)) return blessedAs(own, actual);
    std::error_code error;
    std::filesystem::remove(own, error);
    if (error) return testing::AssertionFailure() << "cannot remove " << own;
    return testing::AssertionSuccess() << "the same as " << older;
}

}  // namespace

testing::AssertionResult matchesGoldenIn(const GoldenPlaces& places, cairo_surface_t* picture,
                                         const std::string& name,
                                         const GoldenTolerance& tolerance) {
    const GoldenVariants variants(places.references,
                                  RasteriserRelease::ofVersion(places.rasteriser));
    const std::string actualPath = places.output + "/" + name + ".actual.png";
    const std::string diffPath = places.output + "/" + name + ".diff.png";
    const std::optional<Picture> actual = throughFile(picture, actualPath);
    if (!actual) return testing::AssertionFailure() << "cannot write " << actualPath;
    if (places.bless) return bless(variants, name, *actual, tolerance);

    auto matches = same(*actual, variants.reference(name), tolerance, diffPath);
    if (!matches) return matches << "; painted: " << actualPath;
    std::error_code ignored;
    std::filesystem::remove(actualPath, ignored);
    std::filesystem::remove(diffPath, ignored);
    return matches;
}

testing::AssertionResult matchesGolden(cairo_surface_t* picture, const std::string& name,
                                       const GoldenTolerance& tolerance) {
    const char* bless = std::getenv("TARNWICK_BLESS");
    const GoldenPlaces places{TARNWICK_GOLDEN_DIR, TARNWICK_GOLDEN_OUTPUT_DIR,
                              bless && std::string_view(bless) == "1"};
    return matchesGoldenIn(places, picture, name, tolerance);
}

testing::AssertionResult fileMatchesGolden(const std::string& path, const std::string& name,
                                           const GoldenTolerance& tolerance) {
    const painting::CairoSurface picture(cairo_image_surface_create_from_png(path.c_str()));
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS)
        return testing::AssertionFailure() << "no picture " << path;
    return matchesGolden(picture.get(), name, tolerance);
}
