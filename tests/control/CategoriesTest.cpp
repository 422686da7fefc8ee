#include "backends/plist/PlistCodec.hpp"
#include "backends/pulse/categories/CategoryMapping.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/control/Categories.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

namespace control {
namespace {

class Categories : public testing::Test {
 protected:
    Categories() {
        NSPropertyList::setCodec(std::make_shared<PlistCodec>());
        setPreferencesDirectory(files_.folder().string());
    }
    ~Categories() override {
        setMachineModel("");
        setPreferencesDirectory("");
    }
    static std::string fifthFor(const std::string& model) {
        setMachineModel(model);
        return describe(mixerCategories().at(4).categoryName());
    }

    test::MixerFiles files_;
};

TEST_F(Categories, AreThoseOfTheFileHiddenOnesToo) {
    files_.writeCategories({{"A", "a"}, {"B", "b", test::Row::Hidden}});
    const CategoryList list = mixerCategories();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].categoryName(), "B");
}

TEST_F(Categories, WithoutAFileAreTheFirstOnesAndNothingIsWritten) {
    EXPECT_EQ(fifthFor("iPhone6,1"), "PhoneCall");
    EXPECT_EQ(fifthFor("iPad4,1"), "VideoConference");
    EXPECT_FALSE(std::filesystem::exists(files_.categoryFile()));
}

TEST_F(Categories, AreTheFirstOnesWhereTheFileIsNone) {
    test::MixerFiles::write(files_.categoryFile(), "no property list");
    EXPECT_EQ(mixerCategories().size(), 5U);
}

TEST_F(Categories, AreKnownToTheCheckOfTheFileAsToTheVolumeService) {
    std::vector<std::string> names = pulse::knownCategories();
    for (const char* name : {"app:x", "role:x", "sink:x", "source:x", "app:", "stream:x",
                             "ringtone", "", "Audio/Video "})
        names.emplace_back(name);
    for (const std::string& name : names) {
        files_.writeCategories({{name, "Row"}});
        EXPECT_EQ(shell::problemsOfFiles().empty(), pulse::isCategory(name)) << name;
    }
}

class CalledCategory : public testing::Test {
 protected:
    /// The category's name, or the error.
    std::string called(const std::string& name) const {
        const auto record = categoryCalled(name, list_);
        return record ? describe(record->categoryName()) : record.error();
    }
    CategoryList list_ = {{"Ringtone", "Bell"},
                          {"Audio/Video", "Music"},
                          {"app:Game", "Game"},
                          {"Music", "Player"},
                          {"role:game", "Game"}};
};

TEST_F(CalledCategory, IsTheOneOfThatName) {
    EXPECT_EQ(called("Ringtone"), "Ringtone");
}

TEST_F(CalledCategory, IsTheOneOfThatCaption) {
    EXPECT_EQ(called("Bell"), "Ringtone");
}

TEST_F(CalledCategory, IsTheOneOfThatNameBeforeTheOneOfThatCaption) {
    EXPECT_EQ(called("Music"), "Music");
}

TEST_F(CalledCategory, IsNotFoundByACaptionOfSeveral) {
    EXPECT_EQ(called("Game"), "'Game' is the caption of several categories: app:Game, role:game");
}

TEST_F(CalledCategory, IsLookedForLetterByLetter) {
    EXPECT_EQ(called("bell"), "bell");
    EXPECT_EQ(called("Bel"), "Bel");
}

TEST_F(CalledCategory, IsTheServersWhereTheMixerHasNone) {
    EXPECT_EQ(called("sink:hp"), "sink:hp");
    EXPECT_EQ(called(""), "");
}

TEST(CalledCategoryWithoutAName, IsNotFoundByItsCaption) {
    const CategoryList list = {CategoryRecord(PropertyValue(
        PropertyValue::Dictionary{{"prettyCategoryName", PropertyValue("Nameless")}}))};
    EXPECT_EQ(categoryCalled("Nameless", list)->categoryName(), "Nameless");
}

}  // namespace
}  // namespace control
