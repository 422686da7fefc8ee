#include "shells/common/Translation.hpp"
#include "tests/locale/CommaLocale.hpp"

#include <gtest/gtest.h>

namespace shell {
namespace {

/// In a German process that finds the catalogs of this build.
class TranslationTest : public testing::Test {
 protected:
    TranslationTest() { findTranslations(TARNWICK_PROGRAMS); }
    void SetUp() override {
        if (!german_.isActive()) GTEST_SKIP() << "no German locale on this system";
    }

 private:
    CommaLocale german_;
};

TEST_F(TranslationTest, FindsTextsContextsAndPlurals) {
    EXPECT_STREQ(translated("Not now"), "Nicht jetzt");
    EXPECT_STREQ(translatedIn("colour", "white"), "weiß");
    EXPECT_STREQ(translatedCount("{count} stream moved", "{count} streams moved", 1),
                 "{count} Wiedergabe verschoben");
    EXPECT_STREQ(translatedCount("{count} stream moved", "{count} streams moved", 2),
                 "{count} Wiedergaben verschoben");
}

TEST_F(TranslationTest, LeavesTextsWithoutATranslationAsTheyAre) {
    EXPECT_STREQ(translated("a text that no catalog has"), "a text that no catalog has");
    EXPECT_STREQ(translatedIn("colour", "a text that no catalog has"),
                 "a text that no catalog has");
    EXPECT_STREQ(translated(""), "") << "not the catalog's header";
}

TEST_F(TranslationTest, IsEnglishForPrograms) {
    speakEnglish();
    EXPECT_STREQ(translated("Not now"), "Not now");
}

TEST(PreferredLanguageOfTheUser, DecidesTheLanguageAndItsDirectionAndForms) {
    const PreferredLanguage arabic("ar");
    const CommaLocale locale;
    if (!locale.isActive()) GTEST_SKIP() << "no German locale on this system";
    findTranslations(TARNWICK_PROGRAMS);
    EXPECT_EQ(writingDirection(), WritingDirection::RightToLeft);
    const auto moved = [](unsigned long count) {
        return std::string(translatedCount("{count} stream moved", "{count} streams moved", count));
    };
    EXPECT_NE(moved(2), moved(3));
    EXPECT_NE(moved(3), moved(11));
}

TEST(FilledText, ReplacesNamesInAnyOrder) {
    EXPECT_EQ(filled("{a} and {b}", {{"a", "1"}, {"b", "2"}}), "1 and 2");
    EXPECT_EQ(filled("{b}, {a}, {b}", {{"a", "1"}, {"b", "2"}}), "2, 1, 2");
    EXPECT_EQ(filled("", {{"a", "1"}}), "");
}

TEST(FilledText, SurvivesTranslationsWithMissingUnknownAndBrokenNames) {
    EXPECT_EQ(filled("nothing", {{"a", "1"}}), "nothing");
    EXPECT_EQ(filled("{c} {a}", {{"a", "1"}}), "{c} 1");
    EXPECT_EQ(filled("{a", {{"a", "1"}}), "{a");
    EXPECT_EQ(filled("a} {} {{a}} {", {{"a", "1"}}), "a} {} {1} {");
    EXPECT_EQ(filled("100% {0} %s %n", {{"a", "1"}}), "100% {0} %s %n");
}

TEST(FilledText, TakesValuesAsTheyAre) {
    EXPECT_EQ(filled("{a}{b}", {{"a", "{b}"}, {"b", "{a}"}}), "{b}{a}");
}

}  // namespace
}  // namespace shell
