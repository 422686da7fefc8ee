#include "backends/cairo/CairoImageDecoder.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace {

class CairoImageDecoding : public testing::Test {
 public:
    std::string image(const std::string& name, int width, int height, std::uint32_t color) {
        const painting::CairoBitmap bitmap =
            bitmapOf(width, height, [&](int, int) { return color; });
        cairo_surface_write_to_png(bitmap.surface(), folder.path(name).c_str());
        return folder.path(name);
    }

    static std::string contents(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string file(const std::string& name, const std::string& bytes) {
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
        return folder.path(name);
    }

    void expectNoImage(const std::string& path) {
        EXPECT_EQ(decoder.decode(path), nullptr);
        EXPECT_EQ(decoder.decode(path), nullptr);
    }

    Pixel colorOf(const UIBitmap& bitmap) {
        Paper paper(1, 1);
        paper.canvas().drawBitmap(bitmap, CGRectMake(0, 0, 1, 1), CGRectMake(0, 0, 1, 1), {});
        return paper.at(0, 0);
    }

    CairoImageDecoding() { UIImageDecoder::setDecoder(installed_); }
    ~CairoImageDecoding() override { UIImageDecoder::setDecoder(nullptr); }

 private:
    std::shared_ptr<painting::CairoImageDecoder> installed_ =
        std::make_shared<painting::CairoImageDecoder>();

 public:
    TemporaryFolder folder;
    painting::CairoImageDecoder& decoder = *installed_;
};

TEST_F(CairoImageDecoding, TellsTheSizeAndReadsThePixels) {
    const std::string path = image("a.png", 7, 5, 0xff0000ff);
    EXPECT_EQ(decoder.probe(path), (PixelSize{7, 5}));
    const auto bitmap = decoder.decode(path);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->size(), (PixelSize{7, 5}));
    EXPECT_EQ(colorOf(*bitmap), (Pixel{0, 0, 255, 255}));
}

TEST_F(CairoImageDecoding, SharesThePixelsOfAnUnchangedFile) {
    const std::string path = image("a.png", 7, 5, 0xff0000ff);
    const auto first = decoder.decode(path);
    EXPECT_EQ(decoder.decode(path), first);
    std::filesystem::create_hard_link(path, folder.path("b.png"));
    EXPECT_EQ(decoder.decode(folder.path("b.png")), first);
    std::filesystem::create_symlink(path, folder.path("c.png"));
    EXPECT_EQ(decoder.decode(folder.path("c.png")), first);
    EXPECT_EQ(first.use_count(), 1);
}

TEST_F(CairoImageDecoding, LetsThePixelsGoWithTheirLastHolder) {
    const std::string path = image("a.png", 7, 5, 0xff0000ff);
    const std::weak_ptr<const UIBitmap> gone = decoder.decode(path);
    EXPECT_TRUE(gone.expired());
    EXPECT_NE(decoder.decode(path), nullptr);
}

TEST_F(CairoImageDecoding, ReadsAChangedFileAgain) {
    const std::string path = image("a.png", 7, 5, 0xff0000ff);
    const auto before = decoder.decode(path);
    image("a.png", 7, 5, 0xffff0000);
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(5));
    const auto after = decoder.decode(path);
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(colorOf(*after), (Pixel{255, 0, 0, 255}));
    EXPECT_EQ(colorOf(*before), (Pixel{0, 0, 255, 255}));
}

TEST_F(CairoImageDecoding, ReadsAFileThatWasReplaced) {
    const std::string path = image("a.png", 7, 5, 0xff0000ff);
    const auto before = decoder.decode(path);
    std::filesystem::rename(image("new.png", 7, 5, 0xffff0000), path);
    EXPECT_EQ(colorOf(*decoder.decode(path)), (Pixel{255, 0, 0, 255}));
}

TEST_F(CairoImageDecoding, TakesTheLargestImageAndNoneLarger) {
    EXPECT_EQ(decoder.probe(image("a.png", 4096, 1, ~0U)), (PixelSize{4096, 1}));
    EXPECT_EQ(decoder.probe(image("b.png", 1, 4096, ~0U)), (PixelSize{1, 4096}));
    EXPECT_NE(decoder.decode(folder.path("a.png")), nullptr);
    EXPECT_EQ(decoder.probe(image("c.png", 4097, 1, ~0U)), std::nullopt);
    EXPECT_EQ(decoder.probe(image("d.png", 1, 4097, ~0U)), std::nullopt);
    expectNoImage(folder.path("c.png"));
    expectNoImage(folder.path("d.png"));
}

TEST_F(CairoImageDecoding, FindsNoImageInWhatIsNoRegularFile) {
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path("loop"), folder.path("loop"));
    for (const std::string& path :
         {folder.path("absent"), folder.path(""), folder.path("pipe"), folder.path("loop"),
          std::string("/dev/zero"), std::string("/dev/null"), std::string()}) {
        EXPECT_EQ(decoder.probe(path), std::nullopt) << path;
        expectNoImage(path);
    }
}

TEST_F(CairoImageDecoding, FindsNoImageInWhatIsNoPNG) {
    for (const std::string& bytes :
         {std::string(), std::string("GIF89a"), std::string(1000, '\0'), std::string(24, 'P')}) {
        const std::string path = file("a.png", bytes);
        EXPECT_EQ(decoder.probe(path), std::nullopt);
        expectNoImage(path);
    }
}

TEST_F(CairoImageDecoding, FindsNoImageInATruncatedFile) {
    const std::string whole = contents(image("a.png", 40, 30, 0xff336699));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string path = file("b.png", whole.substr(0, length));
        EXPECT_EQ(decoder.probe(path), std::nullopt) << length;
        EXPECT_EQ(UIImage::imageWithContentsOfFile(path), nullptr) << length;
        expectNoImage(path);
    }
}

TEST_F(CairoImageDecoding, FindsAnImageDespiteABrokenByteOnlyIfItCanBeDecoded) {
    const std::string whole = contents(image("a.png", 4, 3, 0xff336699));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const unsigned char mask : {0x01, 0x80, 0xff}) {
            std::string broken = whole;
            broken[at] = char(broken[at] ^ mask);
            const std::string path = file("b.png", broken);
            const bool isWhole = decoder.probe(path).has_value();
            const auto bitmap = decoder.decode(path);
            EXPECT_EQ(isWhole, bitmap != nullptr) << at;
            if (bitmap) colorOf(*bitmap);
        }
    }
}

TEST_F(CairoImageDecoding, FindsNoImageWhoseEndIsBroken) {
    const std::string whole = contents(image("a.png", 4, 3, 0xff336699));
    for (std::size_t at = whole.size() - 12; at < whole.size(); ++at) {
        std::string broken = whole;
        broken[at] = char(broken[at] ^ 0x01);
        const std::string path = file("b.png", broken);
        EXPECT_EQ(decoder.probe(path), std::nullopt) << at;
        expectNoImage(path);
    }
}

TEST_F(CairoImageDecoding, RefusesHugeSizesBeforeItDecodes) {
    std::string bytes = contents(image("a.png", 4, 3, ~0U));
    for (const std::size_t at : {16U, 20U}) {
        for (const unsigned char high : {0x01, 0x7f, 0x80, 0xff}) {
            std::string huge = bytes;
            huge[at] = char(high);
            EXPECT_EQ(decoder.probe(file("b.png", huge)), std::nullopt);
            expectNoImage(folder.path("b.png"));
        }
        std::string none = bytes;
        none[at + 3] = 0;
        EXPECT_EQ(decoder.probe(file("b.png", none)), std::nullopt);
    }
}

TEST_F(CairoImageDecoding, RefusesAFileTooLargeToBeAnImage) {
    const std::string path = image("a.png", 4, 3, ~0U);
    std::filesystem::resize_file(path, 200'000'000);  // Sparse: takes no room.
    EXPECT_EQ(decoder.probe(path), std::nullopt);
    expectNoImage(path);
}

TEST_F(CairoImageDecoding, ReadsAnImageWithoutAlpha) {
    const painting::CairoSurface opaque(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 3, 2));
    const painting::CairoContext context(cairo_create(opaque.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 0);
    cairo_paint(context.get());
    cairo_surface_write_to_png(opaque.get(), folder.path("a.png").c_str());
    const auto bitmap = decoder.decode(folder.path("a.png"));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(colorOf(*bitmap), (Pixel{255, 255, 0, 255}));
}

}  // namespace
