#include "backends/cairo/CaptionLine.hpp"
#include "backends/cairo/Handles.hpp"

#include <gtest/gtest.h>

namespace {

constexpr int usual = 280;  // points

class ShortenedLine : public testing::Test {
 protected:
    ShortenedLine()
        : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())),
          layout_(pango_layout_new(context_.get())) {
        const painting::PangoFontDescriptionPtr font(pango_font_description_from_string("Sans 9"));
        pango_layout_set_font_description(layout_.get(), font.get());
        pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
        pango_layout_set_ellipsize(layout_.get(), PANGO_ELLIPSIZE_END);
    }
    /// What of it is shown in so many points.
    std::string shown(const std::string& text, int points = usual) {
        setCaption(layout_.get(), painting::captionLine(text, 400), points * PANGO_SCALE);
        PangoRectangle logical;
        pango_layout_get_extents(layout_.get(), nullptr, &logical);
        EXPECT_LE(logical.width, points * PANGO_SCALE) << text;
        return pango_layout_get_text(layout_.get());
    }
    bool cutAtItsEnd() { return pango_layout_is_ellipsized(layout_.get()) != FALSE; }

 private:
    painting::PangoContextPtr context_;
    painting::PangoLayoutPtr layout_;
};

std::string manyOf(const std::string& text, int times) {
    std::string result;
    for (int count = 0; count < times; ++count)
        result += text;
    return result;
}

}  // namespace

TEST_F(ShortenedLine, IsTheWholeWhereItFits) {
    for (const char* text : {"Ringtone: 50%", "Media (Speaker): 35%", "Ringtone", "", ": 5%", ")"})
        EXPECT_EQ(shown(text), text);
}

TEST_F(ShortenedLine, LeavesOutTheMiddleOfTheNameAndNothingElse) {
    const std::string name = "A ringtone whose name nobody will ever read to its very end";
    for (const std::string rest :
         {": 100%", " (Speaker): 40%", ": unknown", " (Speaker)", " (Built-in (analog)): 7%"}) {
        const std::string text = shown(name + rest);
        EXPECT_TRUE(text.starts_with("A ringtone")) << text;
        EXPECT_TRUE(text.ends_with("end" + rest)) << text;
        EXPECT_NE(text.find("…"), std::string::npos) << text;
        EXPECT_EQ(text.find(" …"), std::string::npos) << text;
        EXPECT_EQ(text.find("… "), std::string::npos) << text;
        EXPECT_FALSE(cutAtItsEnd()) << text;
    }
}

TEST_F(ShortenedLine, LeavesOutNoMoreThanItMust) {
    const std::string name = manyOf("n", 100);
    const std::string text = shown(name + ": 40%");
    const std::size_t before = text.size();
    EXPECT_GT(before, 30U);
    EXPECT_LT(before, 100U);
    EXPECT_GT(shown(name + ": 40%", usual + 20).size(), before);
}

TEST_F(ShortenedLine, LeavesOutTheMiddleOfTheRouteOfAShortName) {
    const std::string route = "Built-in Audio Analog Stereo of a machine with a long name";
    const std::string text = shown("Audio/Video (" + route + "): 40%");
    EXPECT_TRUE(text.starts_with("Audio/Video (Built")) << text;
    EXPECT_TRUE(text.ends_with("name): 40%")) << text;
    EXPECT_FALSE(cutAtItsEnd());
    EXPECT_TRUE(shown("Media (Headphones): 40%", 150).starts_with("Media (H"));
}

TEST_F(ShortenedLine, LeavesOutMostOfNameAndRouteWhereThereIsHardlyRoom) {
    const std::string text = shown("Audio/Video (Headphones): 40%", 80);
    EXPECT_TRUE(text.starts_with("A")) << text;
    EXPECT_TRUE(text.ends_with("): 40%")) << text;
    EXPECT_FALSE(cutAtItsEnd());
}

TEST_F(ShortenedLine, IsTheValueAloneWhereNothingElseHasRoom) {
    EXPECT_EQ(shown("Bluetooth headphones: 40%", 32), "40%");
    EXPECT_TRUE(shown("Bluetooth headphones: 40%", 60).ends_with("…: 40%"));
}

TEST_F(ShortenedLine, EndsWithItsEllipsisWhereNothingNeedsToStay) {
    const std::string plain = manyOf("Ringtone ", 20);
    EXPECT_EQ(shown(plain), plain);
    EXPECT_TRUE(cutAtItsEnd());
    EXPECT_TRUE(shown(": 40%", 20).starts_with(": 40%"));
    EXPECT_TRUE(cutAtItsEnd());
}

TEST_F(ShortenedLine, KeepsLettersAndTheirMarksTogether) {
    for (const std::string word : {"e\u0301", "音", "مستوى ", "👍🏽", "i\u200d"}) {
        const std::string text = shown("Name " + manyOf(word, 300) + ": 40%");
        EXPECT_TRUE(text.ends_with(": 40%")) << text;
        EXPECT_FALSE(cutAtItsEnd()) << text;
        EXPECT_NE(text.find("…"), std::string::npos) << text;
        EXPECT_EQ(text.find("…\u0301"), std::string::npos) << text;
        EXPECT_TRUE(g_utf8_validate(text.data(), gssize(text.size()), nullptr));
    }
}

TEST_F(ShortenedLine, KeepsTheValueOfAMegabyte) {
    for (const std::string part : {"a", " ", "\u0301", "音", "\xff", "(", ")", ": ", "\n"}) {
        const std::string text = manyOf(part, int((1 << 20) / part.size()));
        EXPECT_TRUE(shown("H" + text + "H: 40%").ends_with("40%")) << part;
        EXPECT_TRUE(shown("H" + text + "H (R): 40%").ends_with("40%")) << part;
    }
}

TEST_F(ShortenedLine, IsValidForAnyBytesInAnyWidth) {
    unsigned state = 1;
    const auto random = [&state] { return (state = state * 1664525U + 1013904223U) >> 16; };
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (unsigned size = random() % 200; size > 0; --size)
            bytes += random() % 4 == 0 ? "():% \xc3"[random() % 6] : char(random());
        const std::string text = shown(bytes + ": 4%", int(random() % 300) + 40);
        EXPECT_TRUE(g_utf8_validate(text.data(), gssize(text.size()), nullptr));
    }
}
