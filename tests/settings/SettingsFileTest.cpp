#include "shells/settings/files/SettingsFile.hpp"
#include "tests/settings/FilesFixture.hpp"

namespace {

using settings::SettingsFile;
namespace SettingsKey = settings::SettingsKey;

class SettingsFileTest : public FilesFixture {
 protected:
    void expectEntries(const std::string& entries) const {
        EXPECT_EQ(contents(files.settingsFile()),
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>" +
                      entries + "</dict></plist>\n");
    }
};

TEST_F(SettingsFileTest, ReadsAsTheWidgetDoes) {
    EXPECT_TRUE(SettingsFile().values().displayPercentage) << "the default";
    files.writeSettings(
        "<key>displayPercentage</key><string>No</string>"
        "<key>textColor</key><string>5</string>");
    const SettingsFile file;
    EXPECT_FALSE(file.values().displayPercentage);
    EXPECT_EQ(SettingsFile::codeOf(file.values().textColor), 5);
    EXPECT_TRUE(file.isSet(SettingsKey::textColor));
    EXPECT_FALSE(file.isSet(SettingsKey::thumbTintColor));
}

TEST_F(SettingsFileTest, KnowsTheCodeOfEachColour) {
    for (NSInteger code = 0; code < 10; ++code)
        EXPECT_EQ(SettingsFile::codeOf(colorForCode(code)), code);
}

TEST_F(SettingsFileTest, WritesAFileThatTheWidgetReads) {
    SettingsFile file;
    EXPECT_EQ(file.set(SettingsKey::selectedSkin, PropertyValue("Metal")), std::nullopt);
    EXPECT_EQ(contents(files.settingsFile()),
              PlistCodec().encode(PropertyValue(
                  PropertyValue::Dictionary{{"selectedSkin", PropertyValue("Metal")}})));
    EXPECT_EQ(SettingsFile().values().selectedSkin, "Metal");
}

TEST_F(SettingsFileTest, SetsOneKeyAndLeavesTheRest) {
    const std::string unknown = "<key>later</key><dict><key>textColor</key><real>1</real></dict>";
    files.writeSettings(unknown + "<key>textColor</key><string>5</string>");
    SettingsFile file;
    EXPECT_EQ(file.set(SettingsKey::textColor, PropertyValue(7)), std::nullopt);
    expectEntries(unknown + "<key>textColor</key><integer>7</integer>");
    EXPECT_EQ(file.set(SettingsKey::bindRingerAndAV, PropertyValue(true)), std::nullopt);
    expectEntries(unknown +
                  "<key>textColor</key><integer>7</integer><key>bindRingerAndAV</key><true/>");
    EXPECT_EQ(file.useDefault(SettingsKey::textColor), std::nullopt);
    expectEntries(unknown + "<key>bindRingerAndAV</key><true/>");
    EXPECT_EQ(file.useDefault(SettingsKey::textColor), std::nullopt);
}

TEST_F(SettingsFileTest, SetsSeveralKeysInOneWrite) {
    files.writeSettings("<key>textColor</key><integer>5</integer>");
    SettingsFile file;
    int changes = 0;
    file.setChangedHandler([&](settings::ChangedBy) { ++changes; });
    EXPECT_EQ(file.set({{SettingsKey::selectedSkin, PropertyValue("Cream")},
                        {SettingsKey::textColor, PropertyValue()},
                        {SettingsKey::thumbTintColor, PropertyValue(2)}}),
              std::nullopt);
    EXPECT_EQ(changes, 1);
    expectEntries(
        "<key>selectedSkin</key><string>Cream</string>"
        "<key>thumbTintColor</key><integer>2</integer>");
}

TEST_F(SettingsFileTest, KeepsTheBinaryForm) {
    const auto binary = writeBinaryPropertyList(PropertyValue(PropertyValue::Dictionary{
        {"unknown", PropertyValue("kept")}, {"textColor", PropertyValue(5)}}));
    test::MixerFiles::write(files.settingsFile(), *binary);
    SettingsFile file;
    EXPECT_EQ(file.set(SettingsKey::textColor, PropertyValue(6)), std::nullopt);
    EXPECT_EQ(contents(files.settingsFile()),
              writeBinaryPropertyList(PropertyValue(PropertyValue::Dictionary{
                  {"unknown", PropertyValue("kept")}, {"textColor", PropertyValue(6)}})));
}

}  // namespace
