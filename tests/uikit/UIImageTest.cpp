#include "platform/uikit/UIImage.hpp"
#include "tests/support/FakeImageDecoder.hpp"
#include "tests/support/RecordingCanvas.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace {
using Paths = std::vector<std::string>;

class ImageTest : public testing::Test {
 protected:
    /// The file that is painted at that scale; "" for none.
    static std::string paintedFile(const UIImage& image, CGFloat scale) {
        RecordingCanvas canvas(scale);
        image.drawInRect(canvas, CGRectMake(0, 0, 40, 40));
        if (canvas.operations().empty()) return "";
        return static_cast<const FakeBitmap&>(*canvas.operations().at(0).bitmap).path();
    }
    void addAllVariants() {
        decoder->addFile("a/t.png", {10, 10});
        decoder->addFile("a/t@2x.png", {20, 20});
        decoder->addFile("a/t@3x.png", {30, 30});
    }
    InstalledFakeDecoder decoder;
};
}  // namespace

TEST_F(ImageTest, IsNoneForNoPathNoFileAndNoDecoder) {
    EXPECT_EQ(UIImage::imageWithContentsOfFile(std::nullopt), nullptr);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("missing.png"), nullptr);
    EXPECT_EQ(UIImage::imageWithContentsOfFile(""), nullptr);
    decoder->addFile("empty.png", {0, 10});
    EXPECT_EQ(UIImage::imageWithContentsOfFile("empty.png"), nullptr);
    addAllVariants();
    UIImageDecoder::setDecoder(nullptr);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("a/t.png"), nullptr);
}

TEST_F(ImageTest, HasItsNameAndPointsFromTheFileAskedFor) {
    decoder->addFile("/x.y/left_track_cream2@2x.png", {40, 20});
    const auto image = UIImage::imageWithContentsOfFile("/x.y/left_track_cream2@2x.png");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->name(), "left_track_cream2@2x");
    EXPECT_EQ(image->size(), (CGSize{20, 10}));
}

TEST_F(ImageTest, KnowsOnlyTwoAndThreePixelsAPoint) {
    decoder->addFile("t@3x.png", {31, 30});
    decoder->addFile("t@4x.png", {40, 40});
    decoder->addFile("t@2x", {20, 20});
    decoder->addFile("@2x.png", {20, 20});
    decoder->addFile("d@2x/plain.png", {20, 20});
    EXPECT_NEAR(UIImage::imageWithContentsOfFile("t@3x.png")->size().width, 31.0 / 3, 1e-6);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("t@4x.png")->size().width, 40);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("t@2x")->size().width, 10);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("@2x.png")->size().width, 10);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("d@2x/plain.png")->size().width, 20);
    EXPECT_EQ(UIImage::imageWithContentsOfFile("d@2x/plain.png")->name(), "plain");
}

TEST_F(ImageTest, PaintsTheSmallestVariantThatIsFineEnough) {
    addAllVariants();
    for (const char* asked : {"a/t.png", "a/t@2x.png"}) {
        const auto image = UIImage::imageWithContentsOfFile(asked);
        EXPECT_EQ(image->size(), (CGSize{10, 10}));
        EXPECT_EQ(paintedFile(*image, 1), "a/t.png");
        EXPECT_EQ(paintedFile(*image, 1.25), "a/t@2x.png");
        EXPECT_EQ(paintedFile(*image, 2), "a/t@2x.png");
        EXPECT_EQ(paintedFile(*image, 2.01), "a/t@3x.png");
        EXPECT_EQ(paintedFile(*image, 4), "a/t@3x.png");
    }
}

TEST_F(ImageTest, PaintsTheFinestThereIsWhenNoneIsFineEnough) {
    decoder->addFile("t.png", {10, 10});
    EXPECT_EQ(paintedFile(*UIImage::imageWithContentsOfFile("t.png"), 3), "t.png");
    decoder->addFile("s@2x.png", {20, 20});
    EXPECT_EQ(paintedFile(*UIImage::imageWithContentsOfFile("s@2x.png"), 3), "s@2x.png");
    EXPECT_EQ(paintedFile(*UIImage::imageWithContentsOfFile("s@2x.png"), 1), "s@2x.png");
}

TEST_F(ImageTest, PaintsAnotherVariantInPlaceOfABrokenOne) {
    addAllVariants();
    decoder->addFile("a/t@2x.png", {20, 20}, FakeImageDecoder::Pixels::Broken);
    EXPECT_EQ(paintedFile(*UIImage::imageWithContentsOfFile("a/t.png"), 2), "a/t@3x.png");
}

TEST_F(ImageTest, PaintsNothingWhenNoVariantCanBeDecodedAndTriesOnce) {
    decoder->addFile("t.png", {10, 10}, FakeImageDecoder::Pixels::Broken);
    const auto image = UIImage::imageWithContentsOfFile("t.png");
    EXPECT_EQ(paintedFile(*image, 1), "");
    EXPECT_EQ(paintedFile(*image, 1), "");
    EXPECT_EQ(decoder->decoded().size(), 1U);
}

TEST_F(ImageTest, DecodesOneVariantAtItsFirstPaintAndNoneBefore) {
    addAllVariants();
    const auto image = UIImage::imageWithContentsOfFile("a/t.png");
    const auto resizable = image->resizableImageWithCapInsets({0, 3, 0, 3});
    EXPECT_EQ(decoder->probed(), Paths{"a/t.png"});
    EXPECT_TRUE(decoder->decoded().empty());
    paintedFile(*image, 2);
    paintedFile(*image, 2);
    paintedFile(*resizable, 2);
    EXPECT_EQ(decoder->decoded(), Paths{"a/t@2x.png"});
}

TEST_F(ImageTest, IsStretchedAsAWholeWithoutCapInsets) {
    decoder->addFile("t@2x.png", {20, 10});
    const auto image = UIImage::imageWithContentsOfFile("t@2x.png");
    RecordingCanvas canvas;
    image->drawInRect(canvas, CGRectMake(1.5, 2, 100, 7), UIColor::redColor());
    ASSERT_EQ(canvas.operations().size(), 1U);
    EXPECT_EQ(canvas.operations()[0].rect, CGRectMake(1.5, 2, 100, 7));
    EXPECT_EQ(canvas.operations()[0].source, CGRectMake(0, 0, 20, 10));
    EXPECT_EQ(canvas.operations()[0].multiply, UIColor::redColor());
}

TEST_F(ImageTest, DrawsNothingInAnEmptyRectangle) {
    const auto image = decoder.image("t.png", {10, 10});
    RecordingCanvas canvas;
    image->drawInRect(canvas, CGRectMake(0, 0, 0, 10));
    image->drawInRect(canvas, CGRectMake(0, 0, -5, 10));
    image->drawInRect(canvas, CGRectMake(0, 0, NAN, 10));
    EXPECT_TRUE(canvas.operations().empty());
    EXPECT_TRUE(decoder->decoded().empty());
}

TEST_F(ImageTest, KeepsNameSizeAndInsetsWhenMadeResizable) {
    const auto image = decoder.image("t.png", {20, 10});
    const auto resizable = image->resizableImageWithCapInsets({0, 9, 0, 9});
    EXPECT_EQ(resizable->name(), "t");
    EXPECT_EQ(resizable->size(), image->size());
    EXPECT_EQ(resizable->capInsets(), (UIEdgeInsets{0, 9, 0, 9}));
    EXPECT_EQ(image->capInsets(), UIEdgeInsets{});
    EXPECT_EQ(image->resizableImageWithCapInsets({-1, NAN, INFINITY, 2})->capInsets(),
              (UIEdgeInsets{0, 0, 0, 2}));
}

TEST_F(ImageTest, MeasuresCapInsetsInThePixelsOfTheVariantPainted) {
    addAllVariants();
    const auto image =
        UIImage::imageWithContentsOfFile("a/t.png")->resizableImageWithCapInsets({0, 3, 0, 4});
    RecordingCanvas canvas(2);
    image->drawInRect(canvas, CGRectMake(0, 0, 100, 10));
    const auto& pieces = canvas.operations();
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[0].source, CGRectMake(0, 0, 6, 20));
    EXPECT_EQ(pieces[0].rect, CGRectMake(0, 0, 3, 10));
    EXPECT_EQ(pieces[2].source, CGRectMake(12, 0, 8, 20));
    EXPECT_EQ(pieces[2].rect, CGRectMake(96, 0, 4, 10));
}
