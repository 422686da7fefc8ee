#include "config/Settings.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "tests/widget/WidgetFixture.hpp"

namespace {

std::string integerEntry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key><integer>" + value + "</integer>";
}

void expectDefaults(const MixerUnderTest& mixer) {
    EXPECT_FALSE(mixer.enableDebugLogging);
    EXPECT_FALSE(mixer.bindRingerAndAVVolumes);
    EXPECT_TRUE(mixer.displayPercentage);
    EXPECT_EQ(mixer.selectedSkin, "Default iOS");
    EXPECT_EQ(mixer.thumbTintColor, UIColor::whiteColor());
    EXPECT_EQ(mixer.textColor, UIColor::whiteColor());
    EXPECT_EQ(mixer.minimumTrackTintColor, UIColor::redColor());
    EXPECT_EQ(mixer.maximumTrackTintColor, UIColor::whiteColor());
}

class SettingsFile : public WidgetTest {
 protected:
    const MixerUnderTest& loaded() {
        mixer = newMixer();
        mixer->loadSettings();
        return *mixer;
    }
    std::shared_ptr<MixerUnderTest> mixer;
};

}  // namespace

TEST_F(SettingsFile, HasEveryDefaultWhenItIsMissing) {
    expectDefaults(loaded());
    EXPECT_FALSE(std::filesystem::exists(settingsFile()));
}

TEST_F(SettingsFile, HasEveryDefaultWhenItIsNotADictionary) {
    std::filesystem::create_directory(settingsFile());
    expectDefaults(loaded());
    std::filesystem::remove(settingsFile());
    writeSettings("<array>broken");
    expectDefaults(loaded());
}

TEST_F(SettingsFile, IsReadFromTheFixedName) {
    EXPECT_EQ(settingsFile().filename(), "org.tarnwick.mixerprefs.plist");
    writeSettings("<key>enableDebugLogging</key><true/>");
    EXPECT_TRUE(loaded().enableDebugLogging);
}

TEST_F(SettingsFile, SetsEveryVariableFromItsKey) {
    writeSettings(
        "<key>enableDebugLogging</key><true/><key>bindRingerAndAV</key><true/>"
        "<key>displayPercentage</key><false/><key>selectedSkin</key><string>Metal</string>" +
        integerEntry("thumbTintColor", "4") + integerEntry("textColor", "6") +
        integerEntry("minimumTrackTintColor", "5") + integerEntry("maximumTrackTintColor", "2"));
    const MixerUnderTest& view = loaded();
    EXPECT_TRUE(view.enableDebugLogging);
    EXPECT_TRUE(view.bindRingerAndAVVolumes);
    EXPECT_FALSE(view.displayPercentage);
    EXPECT_EQ(view.selectedSkin, "Metal");
    EXPECT_EQ(view.thumbTintColor, UIColor::greenColor());
    EXPECT_EQ(view.textColor, UIColor::yellowColor());
    EXPECT_EQ(view.minimumTrackTintColor, UIColor::blueColor());
    EXPECT_EQ(view.maximumTrackTintColor, UIColor::grayColor());
}

TEST_F(SettingsFile, DoesNotKnowBindingUnderTheNameOfItsVariable) {
    writeSettings("<key>bindRingerAndAVVolumes</key><true/>");
    EXPECT_FALSE(loaded().bindRingerAndAVVolumes);
}

TEST_F(SettingsFile, ReadsBooleansFromNumbersAndTexts) {
    struct Row {
        const char* value;
        bool expected;
    };
    for (const Row& row : {Row{"<integer>1</integer>", true}, Row{"<integer>0</integer>", false},
                           Row{"<real>0.5</real>", true}, Row{"<string>YES</string>", true},
                           Row{"<string>no</string>", false}, Row{"<array/>", false}}) {
        writeSettings(std::string("<key>displayPercentage</key>") + row.value);
        EXPECT_EQ(loaded().displayPercentage, row.expected) << row.value;
    }
}

TEST_F(SettingsFile, LeavesNothingFromAnEarlierLoad) {
    writeSettings("<key>enableDebugLogging</key><true/><key>displayPercentage</key><false/>" +
                  integerEntry("textColor", "0") + "<key>selectedSkin</key><string>Cream</string>");
    mixer = newMixer();
    mixer->loadSettings();
    std::filesystem::remove(settingsFile());
    mixer->loadSettings();
    expectDefaults(*mixer);
}

TEST_F(SettingsFile, KeepsTheSkinsNameWithoutChecks) {
    writeSettings("<key>selectedSkin</key><string>No such skin </string>");
    EXPECT_EQ(loaded().selectedSkin, "No such skin ");
    writeSettings("<key>selectedSkin</key><string></string>");
    EXPECT_EQ(loaded().selectedSkin, "");
    writeSettings("<key>selectedSkin</key><integer>3</integer>");
    EXPECT_EQ(loaded().selectedSkin, std::nullopt);
}

TEST_F(SettingsFile, MapsEveryColourCodeAndTakesWhiteForTheRest) {
    struct Row {
        const char* code;
        UIColor expected;
    };
    for (const Row& row :
         {Row{"-9223372036854775808", {1, 1, 1, 1}}, Row{"-1", {1, 1, 1, 1}},
          Row{"0", {1, 0, 0, 1}}, Row{"1", {0, 0, 0, 1}}, Row{"2", {0.5, 0.5, 0.5, 1}},
          Row{"3", {1, 1, 1, 1}}, Row{"4", {0, 1, 0, 1}}, Row{"5", {0, 0, 1, 1}},
          Row{"6", {1, 1, 0, 1}}, Row{"7", {1, 0.5, 0, 1}}, Row{"8", {0.5, 0, 0.5, 1}},
          Row{"9", {0.6, 0.4, 0.2, 1}}, Row{"10", {1, 1, 1, 1}},
          Row{"9223372036854775807", {1, 1, 1, 1}}}) {
        for (const char* key :
             {"thumbTintColor", "textColor", "minimumTrackTintColor", "maximumTrackTintColor"}) {
            writeSettings(integerEntry(key, row.code));
            const MixerUnderTest& view = loaded();
            const std::map<std::string, std::optional<UIColor>> byKey = {
                {"thumbTintColor", view.thumbTintColor},
                {"textColor", view.textColor},
                {"minimumTrackTintColor", view.minimumTrackTintColor},
                {"maximumTrackTintColor", view.maximumTrackTintColor}};
            EXPECT_EQ(byKey.at(key), row.expected) << key << " " << row.code;
        }
    }
}

TEST_F(SettingsFile, ReadsColourCodesFromTextsAndOtherKinds) {
    const std::string key = "<key>minimumTrackTintColor</key>";
    writeSettings(key + "<string>5 apples</string>");
    EXPECT_EQ(loaded().minimumTrackTintColor, UIColor::blueColor());
    writeSettings(key + "<string>blue</string>");
    EXPECT_EQ(loaded().minimumTrackTintColor, UIColor::redColor());
    writeSettings(key + "<real>4.9</real>");
    EXPECT_EQ(loaded().minimumTrackTintColor, UIColor::greenColor());
    writeSettings(key + "<dict/>");
    EXPECT_EQ(loaded().minimumTrackTintColor, UIColor::redColor());
}

TEST_F(SettingsFile, ComesWithTheKindOfDevice) {
    struct Row {
        const char* model;
        bool isIpad;
        bool isIpod;
    };
    for (const Row& row :
         {Row{"iPad4,1", true, false}, Row{"iPod5,1", false, true}, Row{"iPhone6,1", false, false},
          Row{"iPad", true, false}, Row{"ipad4,1", false, false}, Row{" iPad", false, false}}) {
        setMachineModel(row.model);
        EXPECT_EQ(loaded().isIpad, row.isIpad) << row.model;
        EXPECT_EQ(mixer->isIpod, row.isIpod) << row.model;
    }
}

TEST_F(SettingsFile, TakesTheKindOfDeviceAnewAtEveryLoad) {
    setMachineModel("iPad4,1");
    mixer = newMixer();
    mixer->loadSettings();
    setMachineModel("iPod5,1");
    mixer->loadSettings();
    EXPECT_FALSE(mixer->isIpad);
    EXPECT_TRUE(mixer->isIpod);
}
