#include "config/CategoryList.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "tests/widget/WidgetFixture.hpp"

#include <sys/stat.h>

namespace {

class CategoryFile : public WidgetTest {
 protected:
    std::vector<std::string> loadedNames() {
        mixer = newMixer();
        mixer->loadSettings();
        mixer->loadCategories();
        return names(mixer->categories);
    }
    static std::vector<std::string> names(const CategoryList& list) {
        std::vector<std::string> result;
        for (const CategoryRecord& entry : list)
            result.push_back(describe(entry.categoryName()) + "/" +
                             describe(entry.prettyCategoryName()) +
                             (entry.visible() ? "" : " hidden"));
        return result;
    }
    std::shared_ptr<MixerUnderTest> mixer;
};

const std::vector<std::string> initialOnPhone = {
    "Ringtone/Ringtone", "Audio/Video/Audio/Video", "HeadsetBT/BT Headset",
    "HeadphonesBT/BT Headphones", "PhoneCall/Phone Call"};
constexpr const char* creatingLine = "TW: creating initial category config file...";

}  // namespace

TEST_F(CategoryFile, IsCreatedWithTheFiveInitialRecords) {
    EXPECT_EQ(loadedNames(), initialOnPhone);
    const std::optional<CategoryList> written = categoryListFromFile();
    ASSERT_TRUE(written.has_value());
    EXPECT_EQ(names(*written), initialOnPhone);
    EXPECT_EQ(log, std::vector<std::string>{creatingLine});
}

TEST_F(CategoryFile, HoldsThreeKeysARecordInTheirOrder) {
    loadedNames();
    const PropertyValue root = NSPropertyList::arrayWithContentsOfFile(categoryFile());
    ASSERT_NE(root.array(), nullptr);
    for (const PropertyValue& entry : *root.array()) {
        ASSERT_NE(entry.dictionary(), nullptr);
        ASSERT_EQ(entry.dictionary()->size(), 3U);
        EXPECT_EQ((*entry.dictionary())[0].first, "categoryName");
        EXPECT_EQ((*entry.dictionary())[1].first, "prettyCategoryName");
        EXPECT_EQ((*entry.dictionary())[2].first, "visible");
        EXPECT_EQ(entry.objectForKey("visible"), PropertyValue(true));
    }
}

TEST_F(CategoryFile, LogsACountOfZeroBeforeItIsCreated) {
    writeSettings("<key>enableDebugLogging</key><true/>");
    loadedNames();
    EXPECT_EQ(log, (std::vector<std::string>{"TW: got 0 categories", creatingLine}));
}

TEST_F(CategoryFile, LogsItsCountWhenLoggingIsOn) {
    writeSettings("<key>enableDebugLogging</key><true/>");
    writeCategories(record("A", "a") + record("B", "b", "<false/>"));
    loadedNames();
    EXPECT_EQ(log, std::vector<std::string>{"TW: got 2 categories"});
}

TEST_F(CategoryFile, HasVideoConferencesOnAnIpadAndAnIpodOnly) {
    struct Row {
        const char* model;
        const char* fifth;
    };
    for (const Row& row : {Row{"iPad4,1", "VideoConference/Video Conference"},
                           Row{"iPod5,1", "VideoConference/Video Conference"},
                           Row{"iPhone6,1", "PhoneCall/Phone Call"}}) {
        std::filesystem::remove(categoryFile());
        setMachineModel(row.model);
        const std::vector<std::string> loaded = loadedNames();
        ASSERT_EQ(loaded.size(), 5U) << row.model;
        EXPECT_EQ(loaded.back(), row.fifth) << row.model;
    }
}

TEST_F(CategoryFile, IsTakenAsItStandsWhenItHoldsAList) {
    const std::string records = record("X", "Ex") + record("Y", "Why", "<false/>") +
                                record("Z", "Zet", "") + "<string>no record</string><dict/>";
    writeCategories(records);
    const std::string before = categoryFileText();
    EXPECT_EQ(loadedNames(),
              (std::vector<std::string>{"X/Ex", "Y/Why hidden", "Z/Zet hidden",
                                        "(null)/(null) hidden", "(null)/(null) hidden"}));
    EXPECT_EQ(categoryFileText(), before);
    EXPECT_TRUE(log.empty());
}

TEST_F(CategoryFile, IsNotRewrittenWhenItsListIsEmpty) {
    writeCategories("");
    const std::string before = categoryFileText();
    EXPECT_TRUE(loadedNames().empty());
    EXPECT_EQ(categoryFileText(), before);
    EXPECT_TRUE(log.empty());
}

TEST_F(CategoryFile, IsOverwrittenWhenItIsNoList) {
    for (const char* text : {"", "rubbish", "<plist version=\"1.0\"><dict/></plist>",
                             "<plist version=\"1.0\"><array><dict>",
                             "<plist version=\"1.0\"><string>a</string></plist>"}) {
        writeCategoryFile(text);
        log.clear();
        EXPECT_EQ(loadedNames(), initialOnPhone) << text;
        EXPECT_EQ(timesLogged(creatingLine), 1U) << text;
        EXPECT_TRUE(categoryListFromFile().has_value()) << text;
    }
}

TEST_F(CategoryFile, ThatCannotBeWrittenStillGivesTheInitialListEachTime) {
    setPreferencesDirectory("/proc/no-such-folder/");
    EXPECT_EQ(loadedNames(), initialOnPhone);
    EXPECT_EQ(loadedNames(), initialOnPhone);
    EXPECT_EQ(timesLogged(creatingLine), 2U);
    EXPECT_EQ(visibleCategoriesInFile(), 5);
}

TEST_F(CategoryFile, IsReadAnewAtEveryLoad) {
    writeCategories(record("A", "a"));
    EXPECT_EQ(loadedNames(), std::vector<std::string>{"A/a"});
    writeCategories(record("B", "b"));
    EXPECT_EQ(loadedNames(), std::vector<std::string>{"B/b"});
}

TEST_F(CategoryFile, CountsFiveBeforeItExistsAndIsNotCreatedByCounting) {
    EXPECT_EQ(visibleCategoriesInFile(), 5);
    EXPECT_FALSE(std::filesystem::exists(categoryFile()));
    EXPECT_EQ(loadedNames().size(), 5U);
    EXPECT_EQ(visibleCategoriesInFile(), 5);
}

TEST_F(CategoryFile, CountsOnlyVisibleRecords) {
    struct Row {
        std::string records;
        NSInteger expected;
    };
    for (const Row& row :
         {Row{"", 0}, Row{record("A", "a", "<false/>"), 0}, Row{record("A", "a", ""), 0},
          Row{record("A", "a") + record("B", "b", "<false/>") + record("C", "c"), 2},
          Row{record("A", "a", "<integer>1</integer>"), 1},
          Row{record("A", "a", "<string>YES</string>"), 1},
          Row{record("A", "a", "<string>0.9</string>"), 0},
          Row{"<true/><string>YES</string>", 0}}) {
        writeCategories(row.records);
        EXPECT_EQ(visibleCategoriesInFile(), row.expected) << row.records;
    }
}

TEST_F(CategoryFile, CountsFiveWhenItHoldsNoList) {
    writeCategoryFile("<plist version=\"1.0\"><dict/></plist>");
    EXPECT_EQ(visibleCategoriesInFile(), 5);
}
