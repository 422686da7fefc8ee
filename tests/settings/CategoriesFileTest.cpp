#include "platform/celestial/AVSystemController.hpp"
#include "shells/settings/files/CategoriesFile.hpp"
#include "tests/settings/FilesFixture.hpp"

namespace {

using settings::CategoriesFile;
using settings::Trouble;

const std::string head = "<?xml version=\"1.0\"?>\n<!-- mine -->\n<plist version=\"1.0\">\n<array>";
const std::string ringer =
    "\n  <!-- calls -->\n  <dict>\n    <key>categoryName</key>"
    "<string>Ringtone</string>\n    <key>prettyCategoryName</key>"
    "<string>Ringer</string>\n    <key>color</key><integer>3</integer>\n"
    "    <key>visible</key><true/>\n  </dict>";
const std::string media =
    "\n  <dict>\n    <key>categoryName</key><string>Audio/Video</string>\n"
    "    <key>prettyCategoryName</key><string>Media</string>\n"
    "    <key>visible</key><true/>\n  </dict> <!-- all else -->";
const std::string nameless = "\n  <dict>\n    <key>visible</key><string>yes</string>\n  </dict>";
const std::string tail = "\n  <!-- end -->\n</array>\n</plist>\n";

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

class CategoriesFileTest : public FilesFixture {
 protected:
    void write(const std::string& rows) const {
        test::MixerFiles::write(files.categoryFile(), head + rows + tail);
    }
    void expectRows(const std::string& rows) const {
        EXPECT_EQ(contents(files.categoryFile()), head + rows + tail);
    }
    static std::string captions(const CategoriesFile& file) {
        std::string all;
        for (const CategoryRecord& row : file.rows())
            all += row.prettyCategoryName().value_or("-") + " ";
        return all;
    }
};

TEST_F(CategoriesFileTest, ShowsTheDefaultListUntilTheFirstEditWritesIt) {
    CategoriesFile file;
    EXPECT_EQ(file.state().kind, settings::FileState::Kind::Missing);
    const CategoryList initial = initialCategoryList(currentDeviceKind());
    ASSERT_EQ(file.rows().size(), initial.size());
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(file.setCaption(1, "Media"), std::nullopt);
    EXPECT_EQ(file.state().kind, settings::FileState::Kind::Read);

    PropertyValue::Array expected;
    for (const CategoryRecord& record : initial)
        expected.push_back(record.value());
    expected[1] = CategoryRecord(AudioCategory::audioVideo, "Media").value();
    EXPECT_EQ(contents(files.categoryFile()), PlistCodec().encode(PropertyValue(expected)));
}

TEST_F(CategoriesFileTest, BeginsAnEmptyFileLikeAMissingOne) {
    test::MixerFiles::write(files.categoryFile(), "\n");
    CategoriesFile file;
    EXPECT_EQ(file.state().kind, settings::FileState::Kind::Missing);
    EXPECT_EQ(file.setVisible(0, false), std::nullopt);
    EXPECT_FALSE(CategoriesFile().rows()[0].visible());
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(CategoriesFileTest, ShowsRowsAsTheyAreWritten) {
    write(ringer + nameless + "<string>no row</string>");
    const CategoryList rows = CategoriesFile().rows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].categoryName(), "Ringtone");
    EXPECT_EQ(rows[1].categoryName(), std::nullopt);
    EXPECT_TRUE(rows[1].visible());
    EXPECT_FALSE(rows[2].visible());
}

TEST_F(CategoriesFileTest, RenamesHidesAndShowsARowAndLeavesTheRest) {
    write(ringer + media);
    CategoriesFile file;
    EXPECT_EQ(file.setCaption(0, "<Calls> & \u00FC"), std::nullopt);
    const std::string renamed = replaced(ringer, "Ringer", "&lt;Calls&gt; &amp; \u00FC");
    expectRows(renamed + media);
    EXPECT_EQ(file.setVisible(1, false), std::nullopt);
    expectRows(renamed + replaced(media, "<true/>", "<false/>"));
    EXPECT_EQ(file.setVisible(1, true), std::nullopt);
    expectRows(renamed + media);
}

TEST_F(CategoriesFileTest, GivesARowTheKeyThatItLacks) {
    write(nameless);
    CategoriesFile file;
    EXPECT_EQ(file.setCaption(0, "New"), std::nullopt);
    expectRows(replaced(nameless, "</string>",
                        "</string>\n    <key>prettyCategoryName</key><string>New</string>"));
}

TEST_F(CategoriesFileTest, MovesARowWithItsComments) {
    write(ringer + nameless + media);
    CategoriesFile file;
    EXPECT_EQ(file.move(0, 2), std::nullopt);
    expectRows(nameless + media + ringer);
    EXPECT_EQ(file.move(2, 0), std::nullopt);
    EXPECT_EQ(file.move(1, CategoriesFile::end), std::nullopt);
    expectRows(ringer + media + nameless);
}

TEST_F(CategoriesFileTest, RemovesARowAndPutsItBackExactly) {
    for (const std::size_t row : {0U, 1U, 2U}) {
        write(ringer + media + nameless);
        CategoriesFile file;
        const auto removed = file.remove(row);
        ASSERT_TRUE(removed);
        EXPECT_EQ(file.rows().size(), 2U);
        EXPECT_EQ(file.restore(*removed), std::nullopt);
        expectRows(ringer + media + nameless);
    }
}

TEST_F(CategoriesFileTest, PutsALastRowBackExactly) {
    write(ringer);
    CategoriesFile file;
    const auto removed = file.remove(0);
    ASSERT_TRUE(removed);
    expectRows("");
    EXPECT_EQ(file.restore(*removed), std::nullopt);
    expectRows(ringer);
}

TEST_F(CategoriesFileTest, AddsARowWhereItIsAsked) {
    write(ringer + media);
    CategoriesFile file;
    EXPECT_EQ(file.add("app:A", "Player"), std::nullopt);
    expectRows(ringer + media +
               "\n  <dict>\n    <key>categoryName</key>\n    <string>app:A</string>\n"
               "    <key>prettyCategoryName</key>\n    <string>Player</string>\n"
               "    <key>visible</key>\n    <true/>\n  </dict>");
    EXPECT_EQ(file.add("app:B", "Other", 0), std::nullopt);
    EXPECT_EQ(file.add("app:C", "Third", 2), std::nullopt);
    EXPECT_EQ(captions(file), "Other Ringer Third Media Player ");
}

TEST_F(CategoriesFileTest, RefusesARowThatCannotBeOne) {
    write("<string>no row</string>");
    CategoriesFile file;
    EXPECT_TRUE(contains(file.setVisible(0, true), "no row"));
    EXPECT_TRUE(contains(file.setVisible(1, true), "no longer"));
    EXPECT_TRUE(contains(file.move(1, 0), "no longer"));
    EXPECT_FALSE(file.remove(1));
    expectRows("<string>no row</string>");
}

TEST_F(CategoriesFileTest, RefusesCharactersThatTheFileCannotHold) {
    write(ringer);
    CategoriesFile file;
    EXPECT_TRUE(contains(file.setCaption(0, "bell \x07"), "characters"));
    EXPECT_TRUE(contains(file.add("app:\xFF", "A"), "characters"));
    expectRows(ringer);
}

TEST_F(CategoriesFileTest, LosesNothingWhenTwoEditTheSameFile) {
    write(ringer + media + nameless);
    CategoriesFile one;
    CategoriesFile other;
    EXPECT_EQ(other.move(0, 2), std::nullopt);
    EXPECT_EQ(one.setCaption(0, "Calls"), std::nullopt);
    expectRows(media + nameless + replaced(ringer, "Ringer", "Calls"));
    EXPECT_EQ(other.setVisible(2, false), std::nullopt) << "the same row, renamed meanwhile";
    EXPECT_EQ(one.add("app:A", "Player", 0), std::nullopt);
    EXPECT_EQ(other.move(0, 1), std::nullopt) << "Media below the row without a name";
    EXPECT_EQ(captions(one), "Player Media - Calls ");
    EXPECT_EQ(captions(other), "Player - Media Calls ");
    EXPECT_TRUE(contents(files.categoryFile()).find("<integer>3</integer>") != std::string::npos);
}

TEST_F(CategoriesFileTest, TellsThatARowIsGone) {
    write(ringer + media);
    CategoriesFile one;
    write(media);
    EXPECT_TRUE(contains(one.setCaption(0, "Calls"), "no longer in the file"));
    expectRows(media);
    EXPECT_EQ(captions(one), "Media ") << "what is there is shown";
}

TEST_F(CategoriesFileTest, FindsTheNearestOfRowsThatAreAlike) {
    write(nameless + nameless + nameless);
    CategoriesFile file;
    write(media + nameless + nameless + nameless);
    EXPECT_EQ(file.setCaption(2, "X"), std::nullopt);
    EXPECT_EQ(captions(file), "Media - X - ");
}

TEST_F(CategoriesFileTest, PutsARowBackBelowItsNeighbour) {
    write(ringer + media + nameless);
    CategoriesFile file;
    const auto removed = file.remove(1);
    ASSERT_TRUE(removed);
    write(nameless + ringer);
    EXPECT_EQ(file.restore(*removed), std::nullopt);
    expectRows(nameless + ringer + media);
}

}  // namespace
