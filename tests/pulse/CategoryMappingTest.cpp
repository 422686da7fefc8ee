#include "backends/pulse/CategoryMapping.hpp"

#include <gtest/gtest.h>

using namespace pulse;

namespace {

ServerMirror twoDevices() {
    ServerMirror mirror;
    mirror.defaultSinkName = "spk";
    mirror.sinks["spk"] = {.name = "spk", .volume = {2, {32768, 32768}}};
    mirror.sinks["hp"] = {.name = "hp", .formFactor = "headphone"};
    mirror.roleEntries.emplace();
    return mirror;
}

}  // namespace

TEST(CategoryMapping, KnowsTheSixCategories) {
    EXPECT_EQ(knownCategories(),
              (std::vector<std::string>{"Ringtone", "Audio/Video", "HeadsetBT", "HeadphonesBT",
                                        "PhoneCall", "VideoConference"}));
}

TEST(CategoryMapping, MapsMediaToTheDefaultDevice) {
    EXPECT_EQ(objectForCategory(twoDevices(), "Audio/Video"),
              (VolumeObject{VolumeObject::Kind::Sink, "spk"}));
}

TEST(CategoryMapping, MapsTheRingtoneToTheEventEntry) {
    EXPECT_EQ(objectForCategory(twoDevices(), "Ringtone"),
              (VolumeObject{VolumeObject::Kind::RoleEntry, "sink-input-by-media-role:event"}));
}

TEST(CategoryMapping, HasNoObjectForTheOthersNorForStrangersNorForNil) {
    const ServerMirror mirror = twoDevices();
    for (const NSString& category :
         {NSString("HeadsetBT"), NSString("HeadphonesBT"), NSString("PhoneCall"),
          NSString("VideoConference"), NSString("ringtone"), NSString(""), NSString()})
        EXPECT_EQ(objectForCategory(mirror, category), std::nullopt) << describe(category);
}

TEST(CategoryMapping, HasNothingWhileTheDefaultDeviceIsAPlaceholder) {
    ServerMirror mirror = twoDevices();
    for (const char* name : {"", "@DEFAULT_SINK@", "auto_null"}) {
        mirror.defaultSinkName = name;
        mirror.sinks[name] = {.name = name};
        EXPECT_EQ(objectForCategory(mirror, "Audio/Video"), std::nullopt) << name;
        EXPECT_EQ(objectForCategory(mirror, "Ringtone"), std::nullopt) << name;
    }
}

TEST(CategoryMapping, HasNothingUntilTheDefaultDeviceIsDescribed) {
    ServerMirror mirror = twoDevices();
    mirror.defaultSinkName = "new";
    EXPECT_EQ(objectForCategory(mirror, "Audio/Video"), std::nullopt);
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Speaker");
}

TEST(CategoryMapping, HasNoRingtoneWhereTheServerKeepsNoRoles) {
    ServerMirror mirror = twoDevices();
    mirror.roleEntries.reset();
    EXPECT_EQ(objectForCategory(mirror, "Ringtone"), std::nullopt);
}

TEST(CategoryMapping, NamesTheDefaultDevicesRouteForEveryKnownCategory) {
    ServerMirror mirror = twoDevices();
    mirror.defaultSinkName = "hp";
    for (const std::string& category : knownCategories())
        EXPECT_EQ(routeForCategory(mirror, category), "Headphones") << category;
    EXPECT_EQ(routeForCategory(ServerMirror{}, "PhoneCall"), "Speaker");
    EXPECT_EQ(routeForCategory(mirror, "Nonsense"), std::nullopt);
    EXPECT_EQ(routeForCategory(mirror, std::nullopt), std::nullopt);
}

TEST(CategoryMapping, SaysWhatARowHasToBeTold) {
    const CategoryState half{0.5F, "Speaker"};
    const CategoryState quarter{0.25F, "Speaker"};
    const CategoryState halfElsewhere{0.5F, "HDMI"};
    const CategoryState unknown{std::nullopt, "Speaker"};
    const CategoryState unknownElsewhere{std::nullopt, "HDMI"};
    EXPECT_EQ(consequenceOf(half, half), Consequence::None);
    EXPECT_EQ(consequenceOf(half, quarter), Consequence::Volume);
    EXPECT_EQ(consequenceOf(half, halfElsewhere), Consequence::Volume);
    EXPECT_EQ(consequenceOf(unknown, half), Consequence::Volume);
    EXPECT_EQ(consequenceOf(half, unknown), Consequence::Reread);
    EXPECT_EQ(consequenceOf(unknown, unknownElsewhere), Consequence::Reread);
    EXPECT_EQ(consequenceOf(unknown, unknown), Consequence::None);
}

TEST(ServerMirror, AnswersADevicesVolumeAndMute) {
    ServerMirror mirror = twoDevices();
    mirror.sinks["spk"].mute = Mute::On;
    const auto found = mirror.volumeOf({VolumeObject::Kind::Sink, "spk"});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->volume.values[1], 32768U);
    EXPECT_EQ(found->mute, Mute::On);
    EXPECT_FALSE(mirror.volumeOf({VolumeObject::Kind::Sink, "gone"}));
}

TEST(ServerMirror, TakesARoleThatNobodyTouchedAsFullInStereo) {
    const VolumeObject event{VolumeObject::Kind::RoleEntry, roleEntryName("event")};
    ServerMirror mirror = twoDevices();
    const auto found = mirror.volumeOf(event);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->volume.channels, 2);
    EXPECT_EQ(found->volume.values[0], PA_VOLUME_NORM);
    EXPECT_EQ(found->mute, Mute::Off);
    EXPECT_EQ(mirror.rememberedDevice(event.name), "");
    mirror.roleEntries.reset();
    EXPECT_FALSE(mirror.volumeOf(event));
    EXPECT_EQ(mirror.rememberedDevice(event.name), "");
}

TEST(ServerMirror, TakesARoleEntryWithoutAVolumeAsFullAndKeepsItsDevice) {
    const VolumeObject event{VolumeObject::Kind::RoleEntry, roleEntryName("event")};
    ServerMirror mirror = twoDevices();
    (*mirror.roleEntries)[event.name] = {.mute = Mute::On, .device = "hp"};
    EXPECT_EQ(mirror.volumeOf(event)->volume.values[0], PA_VOLUME_NORM);
    EXPECT_EQ(mirror.volumeOf(event)->mute, Mute::On);
    EXPECT_EQ(mirror.rememberedDevice(event.name), "hp");
}

TEST(ServerMirror, WidensAMonoRoleEntryToStereo) {
    const VolumeObject event{VolumeObject::Kind::RoleEntry, roleEntryName("event")};
    ServerMirror mirror = twoDevices();
    (*mirror.roleEntries)[event.name] = {.volume = {1, {1234}}};
    const auto found = mirror.volumeOf(event);
    EXPECT_EQ(found->volume.channels, 2);
    EXPECT_EQ(found->volume.values[0], 1234U);
    EXPECT_EQ(found->volume.values[1], 1234U);
}
