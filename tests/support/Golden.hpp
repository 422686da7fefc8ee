#pragma once

#include "platform/uikit/Geometry.hpp"

#include <cairo.h>
#include <gtest/gtest.h>

#include <string>

/// How far a picture may be from its reference. Shapes are the same with every release of the
/// rasteriser; glyphs that are not have references of their own (GoldenVariants.hpp).
struct GoldenTolerance {
    int levels = 2;                ///< Of 255 and per channel; a pixel further away differs.
    double differingPart = 0.001;  ///< Of all pixels, from 0 to 1.
};

/// Whether a painted picture is that of tests/golden/NAME.png, or of NAME's variant for this
/// release of the rasteriser. A missing reference is a failure. When they differ, NAME.actual.png
/// and NAME.diff.png (differing pixels in red) are written into golden/ of the build folder. With
/// TARNWICK_BLESS=1 in the environment the picture becomes the reference.
testing::AssertionResult matchesGolden(cairo_surface_t* picture, const std::string& name,
                                       const GoldenTolerance& tolerance = {});
/// The same for a PNG file.
testing::AssertionResult fileMatchesGolden(const std::string& path, const std::string& name,
                                           const GoldenTolerance& tolerance = {});
/// The comparison itself with the reference, answer pictures and blessing in other places, and as
/// if another release of the rasteriser had painted.
struct GoldenPlaces {
    std::string references;
    std::string output;
    bool bless = false;
    int rasteriser = cairo_version();
};
testing::AssertionResult matchesGoldenIn(const GoldenPlaces& places, cairo_surface_t* picture,
                                         const std::string& name,
                                         const GoldenTolerance& tolerance = {});
