#include "tests/support/Golden.hpp"

#include "backends/cairo/Handles.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

constexpr std::uint32_t differingColor = 0xffff0000;

int width(cairo_surface_t* image) {
    return cairo_image_surface_get_width(image);
}

int height(cairo_surface_t* image) {
    return cairo_image_surface_get_height(image);
}

unsigned char* row(cairo_surface_t* image, int y) {
    return cairo_image_surface_get_data(image) +
           std::ptrdiff_t(y) * cairo_image_surface_get_stride(image);
}

std::uint32_t pixelAt(cairo_surface_t* image, int x, int y) {
    std::uint32_t value;
    std::memcpy(&value, row(image, y) + 4 * x, sizeof value);
    return value;
}

CairoSurface blank(int wide, int high) {
    return CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, wide, high));
}

CairoSurface argbCopy(cairo_surface_t* image) {
    CairoSurface copy = blank(width(image), height(image));
    const CairoContext context(cairo_create(copy.get()));
    cairo_set_source_surface(context.get(), image, 0, 0);
    cairo_paint(context.get());
    cairo_surface_flush(copy.get());
    return copy;
}

CairoSurface readPNG(const std::string& path) {
    CairoSurface read(cairo_image_surface_create_from_png(path.c_str()));
    if (cairo_surface_status(read.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    return argbCopy(read.get());
}

// Read back after writing, as the reference is: alpha is stored unmultiplied and rounded.
CairoSurface throughFile(cairo_surface_t* picture, const std::string& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    if (cairo_surface_write_to_png(picture, path.c_str()) != CAIRO_STATUS_SUCCESS) return nullptr;
    return readPNG(path);
}

int largestDifference(std::uint32_t a, std::uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        largest = std::max(largest, std::abs(int(a >> shift & 0xff) - int(b >> shift & 0xff)));
    }
    return largest;
}

std::uint32_t faded(std::uint32_t pixel) {
    const std::uint32_t gray = (pixel >> 16 & 0xff) / 8 + (pixel >> 8 & 0xff) / 8 + 0x20;
    return 0xff000000 | gray << 16 | gray << 8 | gray;
}

struct Difference {
    long pixels = 0;
    int largest = 0;
    CairoSurface picture;
};

Difference difference(cairo_surface_t* actual, cairo_surface_t* expected, int levels) {
    Difference result{.picture = blank(width(actual), height(actual))};
    for (int y = 0; y < height(actual); ++y) {
        for (int x = 0; x < width(actual); ++x) {
            const int apart = largestDifference(pixelAt(actual, x, y), pixelAt(expected, x, y));
            result.largest = std::max(result.largest, apart);
            result.pixels += apart > levels ? 1 : 0;
            const std::uint32_t shown =
                apart > levels ? differingColor : faded(pixelAt(actual, x, y));
            std::memcpy(row(result.picture.get(), y) + 4 * x, &shown, sizeof shown);
        }
    }
    cairo_surface_mark_dirty(result.picture.get());
    return result;
}

std::string sizeText(cairo_surface_t* image) {
    return std::to_string(width(image)) + " x " + std::to_string(height(image));
}

testing::AssertionResult blessed(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    if (error) return testing::AssertionFailure() << "cannot write " << to;
    return testing::AssertionSuccess() << "blessed " << to;
}

}  // namespace

testing::AssertionResult matchesGoldenIn(const GoldenPlaces& places, cairo_surface_t* picture,
                                         const std::string& name,
                                         const GoldenTolerance& tolerance) {
    const std::string actualPath = places.output + "/" + name + ".actual.png";
    const std::string diffPath = places.output + "/" + name + ".diff.png";
    const std::string referencePath = places.references + "/" + name + ".png";
    const CairoSurface actual = throughFile(picture, actualPath);
    if (!actual) return testing::AssertionFailure() << "cannot write " << actualPath;
    if (places.bless) return blessed(actualPath, referencePath);

    const CairoSurface expected = readPNG(referencePath);
    if (!expected) {
        return testing::AssertionFailure()
               << "no reference " << referencePath << "; painted: " << actualPath;
    }
    if (sizeText(actual.get()) != sizeText(expected.get())) {
        return testing::AssertionFailure()
               << actualPath << " has " << sizeText(actual.get()) << " pixels, "
               << sizeText(expected.get()) << " are expected";
    }
    const Difference found = difference(actual.get(), expected.get(), tolerance.levels);
    const double all = double(width(actual.get())) * height(actual.get());
    std::error_code ignored;
    if (double(found.pixels) <= tolerance.differingPart * all) {
        std::filesystem::remove(actualPath, ignored);
        std::filesystem::remove(diffPath, ignored);
        return testing::AssertionSuccess();
    }
    cairo_surface_write_to_png(found.picture.get(), diffPath.c_str());
    return testing::AssertionFailure()
           << found.pixels << " of " << all << " pixels of " << name << " differ by more than "
           << tolerance.levels << " levels, by up to " << found.largest << "; see " << diffPath;
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
    const CairoSurface picture = readPNG(path);
    if (!picture) return testing::AssertionFailure() << "no picture " << path;
    return matchesGolden(picture.get(), name, tolerance);
}
