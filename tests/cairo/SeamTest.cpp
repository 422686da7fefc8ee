#include "backends/cairo/CairoImageDecoder.hpp"
#include "platform/uikit/UIImage.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr int cap = 9;  // points, as the skins give them
constexpr int narrowest = 40;
constexpr int widest = 2000;

struct Track {
    const char* name;
    int step;  ///< Between the widths that are tried, points.
};

std::ostream& operator<<(std::ostream& stream, const Track& track) {
    return stream << track.name;
}

class TrackImage : public testing::TestWithParam<Track> {
 public:
    void SetUp() override {
        UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
        const std::string path = std::string(TARNWICK_IMAGE_DIR "/") + GetParam().name + ".png";
        const auto plain = UIImage::imageWithContentsOfFile(path);
        ASSERT_NE(plain, nullptr) << path;
        image = plain->resizableImageWithCapInsets({0, cap, 0, cap});
    }

    // The first column between the caps that differs from its neighbour, -1 for none.
    static int seam(Paper& paper, int width, int scale) {
        cairo_surface_flush(paper.surface());
        const unsigned char* data = cairo_image_surface_get_data(paper.surface());
        const int stride = cairo_image_surface_get_stride(paper.surface());
        const int from = cap * scale;
        const int to = (width - cap) * scale;
        for (int y = 0; y < paper.pixelsHigh(); ++y) {
            const unsigned char* row = data + std::ptrdiff_t(y) * stride + std::ptrdiff_t(from) * 4;
            if (std::memcmp(row, row + 4, std::size_t(to - from - 1) * 4) != 0) return y;
        }
        return -1;
    }

    std::shared_ptr<const UIImage> image;
};

TEST_P(TrackImage, HasNoSeamAtAnyWidth) {
    const CGFloat height = image->size().height;
    for (const int scale : {1, 2, 3}) {
        Paper paper(widest, int(height), scale);
        for (int width = narrowest; width <= widest; width += GetParam().step) {
            cairo_set_operator(paper.context(), CAIRO_OPERATOR_CLEAR);
            cairo_rectangle(paper.context(), 0, 0, width, height);
            cairo_fill(paper.context());
            cairo_set_operator(paper.context(), CAIRO_OPERATOR_OVER);
            image->drawInRect(paper.canvas(), CGRectMake(0, 0, CGFloat(width), height));
            ASSERT_EQ(seam(paper, width, scale), -1) << width << " points at " << scale;
            const int middle = paper.pixelsHigh() / 2;
            ASSERT_GT(paper.alphaAt(width * scale / 2, middle), 200) << width;
            ASSERT_GT(paper.alphaAt((width - cap / 2) * scale, middle), 200) << width;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Skins, TrackImage,
    testing::Values(Track{"left_track_cream2@2x", 1}, Track{"right_track_cream@2x", 7},
                    Track{"right_track_cream_highlighted", 7}, Track{"left_track_metal@2x", 7},
                    Track{"right_track_metal@2x", 1}, Track{"right_track_metal_highlighted", 7}));

}  // namespace
