#include "backends/cairo/CairoBitmap.hpp"
#include "backends/cairo/CairoCanvas.hpp"
#include "tests/desktop/LonelyDisplay.hpp"
#include "tests/support/Paper.hpp"

#include <cairo-script.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace test {
namespace {

constexpr int side = 8;  // pixels

painting::CairoSurface inMemory(int width, int height) {
    return painting::CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

painting::CairoSurface onServer(GdkDisplay* display, int width = side, int height = side) {
    GdkWindow* root = gdk_screen_get_root_window(gdk_display_get_default_screen(display));
    return painting::CairoSurface(
        gdk_window_create_similar_surface(root, CAIRO_CONTENT_COLOR_ALPHA, width, height));
}

// Half of it is half seen.
std::uint32_t halfVeiled(int x, int y) {
    return x < side / 2 ? 0xff2080c0U : 0x80104060U + std::uint32_t(y);
}

std::vector<std::uint32_t> pixelsOf(cairo_surface_t* surface) {
    cairo_surface_t* image = cairo_surface_map_to_image(surface, nullptr);
    const auto* row = cairo_image_surface_get_data(image);
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < cairo_image_surface_get_height(image);
         ++y, row += cairo_image_surface_get_stride(image)) {
        const auto* words = reinterpret_cast<const std::uint32_t*>(row);
        pixels.insert(pixels.end(), words, words + cairo_image_surface_get_width(image));
    }
    cairo_surface_unmap_image(surface, image);
    return pixels;
}

std::vector<std::uint32_t> drawn(const painting::CairoBitmap& bitmap, cairo_surface_t* target,
                                 const UIColor& tint) {
    const painting::CairoContext context(cairo_create(target));
    cairo_set_source_rgb(context.get(), 1, 1, 0);
    cairo_paint(context.get());
    painting::CairoCanvas(context.get(), 1)
        .drawBitmap(bitmap, CGRectMake(0, 0, side, side), CGRectMake(0, 0, side, side), tint);
    return pixelsOf(target);
}

painting::CairoSurface veiled(int width, int height) {
    painting::CairoSurface image = inMemory(width, height);
    unsigned char* row = cairo_image_surface_get_data(image.get());
    for (int y = 0; y < height; ++y, row += cairo_image_surface_get_stride(image.get()))
        for (int x = 0; x < width; ++x)
            reinterpret_cast<std::uint32_t*>(row)[x] = halfVeiled(x, y);
    cairo_surface_mark_dirty(image.get());
    return image;
}

bool sharesMemory() {
    std::ifstream maps("/proc/self/maps");
    const std::string text{std::istreambuf_iterator<char>(maps), {}};
    return text.find("SYSV") != std::string::npos;
}

class DeviceCopyTest : public testing::Test {
 protected:
    std::optional<LonelyDisplay> display{std::in_place};
    painting::CairoSurface image = inMemory(side, side);
    painting::DeviceCopy copy;
};

TEST_F(DeviceCopyTest, IsMadeOnceForAServer) {
    const painting::CairoSurface one = onServer(display->get());
    const painting::CairoSurface other = onServer(display->get());
    cairo_surface_t* const made = copy.of(image.get(), one.get());
    ASSERT_NE(made, image.get());
    EXPECT_EQ(cairo_surface_get_device(made), cairo_surface_get_device(one.get()));
    EXPECT_EQ(copy.of(image.get(), other.get()), made);
}

TEST(DeviceCopyPixels, AreThoseOfTheImageWhateverItsSize) {
    // Never closed: with a display Cairo drops the list of what it shared with that, unfreed.
    static auto& lasting = *std::make_unique<LonelyDisplay>().release();
    for (const auto& [width, height] : {std::pair{1, 1}, {31, 40}, {32, 40}, {33, 3}, {100, 1}}) {
        const painting::CairoSurface pixels = veiled(width, height);
        painting::DeviceCopy copy;
        const painting::CairoSurface target = onServer(lasting.get());
        cairo_surface_t* const made = copy.of(pixels.get(), target.get());
        ASSERT_NE(made, pixels.get());
        EXPECT_EQ(pixelsOf(made), pixelsOf(pixels.get())) << width << " x " << height;
    }
}

TEST_F(DeviceCopyTest, OfASkinsThumbNeedsNoMemoryThatTheServerShares) {
    const painting::CairoSurface thumb = veiled(31, 31);
    const painting::CairoSurface target = onServer(display->get());
    ASSERT_NE(copy.of(thumb.get(), target.get()), thumb.get());
    EXPECT_FALSE(sharesMemory());
}

TEST_F(DeviceCopyTest, IsMadeAnewForAnotherDevice) {
    const painting::CairoDevice record(cairo_script_create("/dev/null"));
    const painting::CairoSurface recorded(
        cairo_script_surface_create(record.get(), CAIRO_CONTENT_COLOR_ALPHA, side, side));
    const painting::CairoSurface target = onServer(display->get());
    copy.of(image.get(), target.get());
    EXPECT_EQ(cairo_surface_get_device(copy.of(image.get(), recorded.get())), record.get());
    EXPECT_EQ(cairo_surface_get_device(copy.of(image.get(), target.get())),
              cairo_surface_get_device(target.get()));
}

TEST_F(DeviceCopyTest, IsTheImageItselfForATargetInMemory) {
    const painting::CairoSurface target = inMemory(side, side);
    EXPECT_EQ(copy.of(image.get(), target.get()), image.get());
}

TEST_F(DeviceCopyTest, IsTheImageItselfForATargetOfAnotherScale) {
    const painting::CairoSurface target = onServer(display->get());
    cairo_surface_set_device_scale(target.get(), 2, 2);
    EXPECT_EQ(copy.of(image.get(), target.get()), image.get());
    cairo_surface_set_device_scale(target.get(), 1, 2);
    EXPECT_EQ(copy.of(image.get(), target.get()), image.get());
}

TEST_F(DeviceCopyTest, IsTheImageItselfWhereThatIsLarge) {
    const painting::CairoSurface target = onServer(display->get());
    const painting::CairoSurface large = inMemory(512, 513);
    EXPECT_EQ(copy.of(large.get(), target.get()), large.get());
    painting::DeviceCopy other;
    const painting::CairoSurface largest = inMemory(512, 512);
    EXPECT_NE(other.of(largest.get(), target.get()), largest.get());
}

TEST_F(DeviceCopyTest, DrawsTheSamePixelsAsTheImageDoesAgainAndAgain) {
    const painting::CairoBitmap bitmap = bitmapOf(side, side, halfVeiled);
    for (const UIColor& tint : {UIColor::whiteColor(), UIColor{0.5, 1, 0, 0.5}}) {
        const painting::CairoSurface paper = inMemory(side, side);
        const std::vector<std::uint32_t> expected = drawn(bitmap, paper.get(), tint);
        const painting::CairoSurface target = onServer(display->get());
        for (int time = 1; time <= 3; ++time)
            EXPECT_EQ(drawn(bitmap, target.get(), tint), expected) << time;
    }
}

TEST_F(DeviceCopyTest, OutlivesItsDisplay) {
    copy.of(image.get(), onServer(display->get()).get());
    display.reset();
    const painting::CairoSurface target = inMemory(side, side);
    EXPECT_EQ(copy.of(image.get(), target.get()), image.get());
}

}  // namespace
}  // namespace test
