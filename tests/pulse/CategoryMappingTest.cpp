#include "backends/pulse/categories/CategoryMapping.hpp"

#include <gtest/gtest.h>

using namespace pulse;

using Kind = VolumeObject::Kind;

namespace {

ServerMirror twoDevices() {
    ServerMirror mirror;
    mirror.server.defaultSinkName = "spk";
    mirror.sinks["spk"] = {.name = "spk", .volume = {2, {32768, 32768}}};
    mirror.sinks["hp"] = {.name = "hp", .formFactor = "headphone"};
    mirror.restoreEntries.emplace();
    return mirror;
}

void addSink(ServerMirror& mirror, const Device& sink) {
    mirror.sinks[sink.name] = sink;
}

const Device a2dp{.name = "buds", .bus = "bluetooth", .bluetoothProfile = "a2dp_sink"};
const Device handsFree{.name = "buds", .bus = "bluetooth", .bluetoothProfile = "headset-head-unit"};

}  // namespace

TEST(CategoryMapping, KnowsTheSixCategories) {
    EXPECT_EQ(knownCategories(),
              (std::vector<std::string>{"Ringtone", "Audio/Video", "HeadsetBT", "HeadphonesBT",
                                        "PhoneCall", "VideoConference"}));
}

TEST(CategoryMapping, TellsCategoriesFromOtherNames) {
    for (const char* name : {"Ringtone", "role:game", "sink:spk", "source:mic", "app:Firefox"})
        EXPECT_TRUE(isCategory(name)) << name;
    for (const char* name : {"", "ringtone", "role:", "sink:", "app", "Role:game", "other:x"})
        EXPECT_FALSE(isCategory(name)) << name;
    EXPECT_FALSE(isCategory(std::nullopt));
}

TEST(CategoryMapping, MapsMediaToTheDefaultDevice) {
    EXPECT_EQ(objectForCategory(twoDevices(), "Audio/Video"), (VolumeObject{Kind::Sink, "spk"}));
}

TEST(CategoryMapping, MapsRingtoneAndCallsToTheirRoles) {
    EXPECT_EQ(objectForCategory(twoDevices(), "Ringtone"), (VolumeObject{Kind::Role, "event"}));
    EXPECT_EQ(objectForCategory(twoDevices(), "PhoneCall"), (VolumeObject{Kind::Role, "phone"}));
}

TEST(CategoryMapping, MapsVideoConferencesToWhoeverPlaysAndRecords) {
    EXPECT_EQ(objectForCategory(twoDevices(), "VideoConference"),
              (VolumeObject{Kind::Conference, ""}));
}

TEST(CategoryMapping, PutsRoleSinksFirst) {
    const std::pair<const char*, const char*> expectations[] = {
        {"Ringtone", "notification"},   {"Ringtone", "ringing"}, {"Ringtone", "ringtone"},
        {"Audio/Video", "multimedia"},  {"PhoneCall", "call"},   {"PhoneCall", "phone"},
        {"PhoneCall", "communication"},
    };
    for (const std::string prefix : {"input.loopback.sink.role.", "control.endpoint."}) {
        for (const auto& [category, role] : expectations) {
            ServerMirror mirror = twoDevices();
            addSink(mirror, {.name = prefix + role});
            EXPECT_EQ(objectForCategory(mirror, category),
                      (VolumeObject{Kind::Sink, prefix + role}));
        }
    }
}

TEST(CategoryMapping, FindsARoleSinkByWhatItIsIntendedFor) {
    ServerMirror mirror = twoDevices();
    addSink(mirror, {.name = "input.loopback.sink.role.x", .intendedRoles = {"Music", "Phone"}});
    EXPECT_EQ(objectForCategory(mirror, "PhoneCall"),
              (VolumeObject{Kind::Sink, "input.loopback.sink.role.x"}));
}

TEST(CategoryMapping, DoesNotTakeARealDeviceForARoleSink) {
    ServerMirror mirror = twoDevices();
    mirror.sinks["hp"].intendedRoles = {"phone"};
    EXPECT_EQ(objectForCategory(mirror, "PhoneCall"), (VolumeObject{Kind::Role, "phone"}));
}

TEST(CategoryMapping, MapsABluetoothDeviceByItsProfile) {
    ServerMirror mirror = twoDevices();
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT"), std::nullopt);
    EXPECT_EQ(objectForCategory(mirror, "HeadsetBT"), std::nullopt);
    addSink(mirror, a2dp);
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT"), (VolumeObject{Kind::Sink, "buds"}));
    EXPECT_EQ(objectForCategory(mirror, "HeadsetBT"), std::nullopt);
    addSink(mirror, handsFree);
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT"), std::nullopt);
    EXPECT_EQ(objectForCategory(mirror, "HeadsetBT"), (VolumeObject{Kind::Sink, "buds"}));
}

TEST(CategoryMapping, PrefersTheBluetoothDeviceThatIsTheDefault) {
    ServerMirror mirror = twoDevices();
    addSink(mirror, a2dp);
    Device other = a2dp;
    other.name = "zzz";
    addSink(mirror, other);
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT")->name, "buds");
    mirror.server.defaultSinkName = "zzz";
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT")->name, "zzz");
    EXPECT_EQ(objectForCategory(mirror, "HeadphonesBT"), objectForCategory(mirror, "Audio/Video"));
}

TEST(CategoryMapping, HasNothingWhileTheDefaultDeviceIsAPlaceholder) {
    ServerMirror mirror = twoDevices();
    addSink(mirror, a2dp);
    for (const char* name : {"", "@DEFAULT_SINK@", "auto_null"}) {
        mirror.server.defaultSinkName = name;
        mirror.sinks[name] = {.name = name};
        for (const std::string& category : knownCategories())
            EXPECT_EQ(objectForCategory(mirror, category), std::nullopt) << name << category;
        EXPECT_EQ(objectForCategory(mirror, "role:game"), std::nullopt) << name;
    }
}

TEST(CategoryMapping, HasNothingUntilTheDefaultDeviceIsDescribed) {
    ServerMirror mirror = twoDevices();
    mirror.server.defaultSinkName = "new";
    EXPECT_EQ(objectForCategory(mirror, "Audio/Video"), std::nullopt);
}

TEST(CategoryMapping, HasNoObjectForStrangersNorForNil) {
    const ServerMirror mirror = twoDevices();
    for (const NSString& category :
         {NSString("ringtone"), NSString("role:"), NSString(""), NSString()})
        EXPECT_EQ(objectForCategory(mirror, category), std::nullopt) << describe(category);
}

TEST(CategoryMapping, MapsSchemesToWhatTheyName) {
    ServerMirror mirror = twoDevices();
    mirror.sources["mic"] = {.name = "mic"};
    mirror.server.defaultSourceName = "mic";
    EXPECT_EQ(objectForCategory(mirror, "role:game"), (VolumeObject{Kind::Role, "game"}));
    EXPECT_EQ(objectForCategory(mirror, "sink:hp"), (VolumeObject{Kind::Sink, "hp"}));
    EXPECT_EQ(objectForCategory(mirror, "sink:@DEFAULT_SINK@"), (VolumeObject{Kind::Sink, "spk"}));
    EXPECT_EQ(objectForCategory(mirror, "sink:@REAL@"), (VolumeObject{Kind::Sink, "spk"}));
    EXPECT_EQ(objectForCategory(mirror, "source:mic"), (VolumeObject{Kind::Source, "mic"}));
    EXPECT_EQ(objectForCategory(mirror, "source:@DEFAULT_SOURCE@"),
              (VolumeObject{Kind::Source, "mic"}));
    EXPECT_EQ(objectForCategory(mirror, "app:Firefox"),
              (VolumeObject{Kind::Application, "Firefox"}));
}

TEST(CategoryMapping, HasNoObjectForADeviceThatIsNotThere) {
    ServerMirror mirror = twoDevices();
    for (const char* category : {"sink:gone", "source:gone", "source:@DEFAULT_SOURCE@"})
        EXPECT_EQ(objectForCategory(mirror, category), std::nullopt) << category;
    mirror.server.defaultSinkName = "auto_null";
    EXPECT_EQ(objectForCategory(mirror, "sink:@DEFAULT_SINK@"), std::nullopt);
}

TEST(CategoryMapping, MapsANamedRoleToItsSinkFirst) {
    ServerMirror mirror = twoDevices();
    addSink(mirror,
            {.name = "input.loopback.sink.role.multimedia", .intendedRoles = {"Music", "Game"}});
    EXPECT_EQ(objectForCategory(mirror, "role:game"),
              (VolumeObject{Kind::Sink, "input.loopback.sink.role.multimedia"}));
    EXPECT_EQ(objectForCategory(mirror, "role:alarm"), (VolumeObject{Kind::Role, "alarm"}));
}

TEST(CategoryMapping, MapsTheWordsForARoleToOneObject) {
    ServerMirror mirror = twoDevices();
    EXPECT_EQ(objectForCategory(mirror, "role:notification"),
              objectForCategory(mirror, "Ringtone"));
    EXPECT_EQ(objectForCategory(mirror, "role:Movie"), (VolumeObject{Kind::Role, "video"}));
    addSink(mirror, {.name = "input.loopback.sink.role.multimedia", .intendedRoles = {"Movie"}});
    EXPECT_EQ(objectForCategory(mirror, "role:video"),
              (VolumeObject{Kind::Sink, "input.loopback.sink.role.multimedia"}));
}

TEST(CategoryMapping, PrefersTheSinkThatIsNamedByTheWordItself) {
    ServerMirror mirror = twoDevices();
    for (const char* role : {"alarm", "alert"})
        addSink(mirror, {.name = std::string("input.loopback.sink.role.") + role});
    EXPECT_EQ(objectForCategory(mirror, "role:alert"),
              (VolumeObject{Kind::Sink, "input.loopback.sink.role.alert"}));
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
