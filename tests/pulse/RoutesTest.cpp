#include "backends/pulse/categories/CategoryMapping.hpp"
#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/categories/Routes.hpp"

#include <gtest/gtest.h>

using namespace pulse;

namespace {

const std::string musicSink = "input.loopback.sink.role.multimedia";

ServerMirror twoDevices() {
    ServerMirror mirror;
    mirror.server.defaultSinkName = "spk";
    mirror.sinks["spk"] = {.name = "spk", .index = 1};
    mirror.sinks["hp"] = {.name = "hp", .formFactor = "headphone", .index = 2};
    mirror.restoreEntries.emplace();
    return mirror;
}

// A role's sink, and the stream by which it plays on that device.
ServerMirror withRoleSinkOn(std::uint32_t sinkIndex) {
    ServerMirror mirror = twoDevices();
    mirror.sinks[musicSink] = {.name = musicSink, .index = 3};
    mirror.sinkInputs.push_back({.index = 10,
                                 .sinkIndex = sinkIndex,
                                 .role = "Loopback",
                                 .nodeName = "output.loopback.sink.role.multimedia"});
    return mirror;
}

}  // namespace

TEST(Routes, AreTheDefaultDevicesForEveryCategoryThatHasNothingElse) {
    ServerMirror mirror = twoDevices();
    mirror.server.defaultSinkName = "hp";
    for (const std::string& category : knownCategories())
        EXPECT_EQ(routeForCategory(mirror, category), "Headphones") << category;
    EXPECT_EQ(routeForCategory(mirror, "role:game"), "Headphones");
    EXPECT_EQ(routeForCategory(mirror, "app:Firefox"), "Headphones");
}

TEST(Routes, AreSpeakerBeforeAnythingIsKnown) {
    for (const std::string& category : knownCategories())
        EXPECT_EQ(routeForCategory(ServerMirror{}, category), "Speaker") << category;
}

TEST(Routes, AreNilForWhatIsNoCategoryAndForDevicesThatAreNotThere) {
    const ServerMirror mirror = twoDevices();
    for (const NSString& category : {NSString("Nonsense"), NSString("role:"), NSString(),
                                     NSString("sink:gone"), NSString("source:gone")})
        EXPECT_EQ(routeForCategory(mirror, category), std::nullopt) << describe(category);
}

TEST(Routes, AreThoseOfNamedDevices) {
    ServerMirror mirror = twoDevices();
    mirror.sources["mic"] = {.name = "mic", .bus = "usb"};
    EXPECT_EQ(routeForCategory(mirror, "sink:hp"), "Headphones");
    EXPECT_EQ(routeForCategory(mirror, "sink:@DEFAULT_SINK@"), "Speaker");
    EXPECT_EQ(routeForCategory(mirror, "source:mic"), "USB Audio");
}

TEST(Routes, AreThoseOfTheObjectThatACategoryIsKnownToHave) {
    const ServerMirror mirror = twoDevices();
    const VolumeObject headphones{VolumeObject::Kind::Sink, "hp"};
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video", headphones), "Headphones");
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video", std::nullopt), "Speaker");
    for (const NSString& category : {NSString("sink:gone"), NSString("Nonsense"), NSString()})
        EXPECT_EQ(routeForCategory(mirror, category, std::nullopt), std::nullopt);
}

TEST(Routes, AreABluetoothDevicesOwnWhateverIsTheDefault) {
    ServerMirror mirror = twoDevices();
    mirror.sinks["buds"] = {.name = "buds", .bus = "bluetooth", .bluetoothProfile = "a2dp_sink"};
    EXPECT_EQ(routeForCategory(mirror, "HeadphonesBT"), "HeadphonesBT");
    EXPECT_EQ(routeForCategory(mirror, "HeadsetBT"), "Speaker");
}

TEST(Routes, FollowAStreamToItsDevice) {
    ServerMirror mirror = twoDevices();
    mirror.sinkInputs = {{.index = 7, .sinkIndex = 2, .role = "phone"}};
    EXPECT_EQ(routeForCategory(mirror, "PhoneCall"), "Headphones");
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Speaker");
    mirror.sinkInputs[0].sinkIndex = 99;
    EXPECT_EQ(routeForCategory(mirror, "PhoneCall"), "Speaker");
}

TEST(Routes, AreTheDeviceThatTheServerRemembersForARole) {
    ServerMirror mirror = twoDevices();
    (*mirror.restoreEntries)[roleEntryName("event")] = {.device = "hp"};
    EXPECT_EQ(routeForCategory(mirror, "Ringtone"), "Headphones");
    (*mirror.restoreEntries)[roleEntryName("event")] = {.device = "gone"};
    EXPECT_EQ(routeForCategory(mirror, "Ringtone"), "Speaker");
}

TEST(Routes, LookPastARoleSinkToTheDeviceBehindIt) {
    EXPECT_EQ(routeForCategory(withRoleSinkOn(2), "Audio/Video"), "Headphones");
    EXPECT_EQ(routeForCategory(withRoleSinkOn(1), "Audio/Video"), "Speaker");
}

TEST(Routes, LookPastADefaultThatIsARoleSink) {
    ServerMirror mirror = withRoleSinkOn(2);
    mirror.server.defaultSinkName = musicSink;
    EXPECT_EQ(routeForCategory(mirror, "PhoneCall"), "Headphones");
    mirror.sinkInputs.clear();
    mirror.sinks["spk"].bus = "pci";
    EXPECT_EQ(routeForCategory(mirror, "PhoneCall"), "Speaker") << "the machine's own device";
}

TEST(Routes, AreTheDefaultDevicesForARoleSinkThatPlaysNothing) {
    ServerMirror mirror = withRoleSinkOn(2);
    mirror.sinkInputs.clear();
    mirror.sinks["alsa"] = {.name = "alsa", .formFactor = "hdmi", .bus = "pci", .index = 6};
    mirror.server.defaultSinkName = "hp";
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Headphones");
}

TEST(Routes, LookPastVirtualDevicesOfBothServers) {
    ServerMirror mirror = twoDevices();
    mirror.sinks["remapped"] = {.name = "remapped", .masterDevice = "filter", .index = 4};
    mirror.sinks["filter"] = {.name = "filter", .linkGroup = "filter-1", .index = 5};
    mirror.sinkInputs = {{.index = 7, .sinkIndex = 2, .linkGroup = "filter-1"}};
    mirror.server.defaultSinkName = "remapped";
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Headphones");
}

TEST(Routes, EndWhereVirtualDevicesAreConnectedInACircle) {
    ServerMirror mirror = twoDevices();
    mirror.sinks["one"] = {.name = "one", .masterDevice = "two"};
    mirror.sinks["two"] = {.name = "two", .masterDevice = "one"};
    mirror.server.defaultSinkName = "one";
    mirror.sinks["spk"].bus = "pci";
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Speaker");
    mirror.sinks.erase("spk");
    mirror.sinks.erase("hp");
    EXPECT_EQ(realSinkBehind(mirror, mirror.defaultSink()), nullptr);
    EXPECT_EQ(routeForCategory(mirror, "Audio/Video"), "Speaker");
}

TEST(Roles, HaveNamesThatCompareWithoutCase) {
    EXPECT_TRUE(isSameName("Music", "music"));
    EXPECT_FALSE(isSameName("music", "movie"));
    EXPECT_TRUE(isSameName("aMz", "AmZ"));
    EXPECT_FALSE(isSameName("@[", "`{")) << "beside the letters";
    EXPECT_FALSE(isSameName("music", "musics"));
}

TEST(Roles, HaveAWordInEachVocabulary) {
    EXPECT_TRUE(isSameRole("video", "Movie"));
    EXPECT_TRUE(isSameRole("animation", "Movie"));
    EXPECT_FALSE(isSameRole("video", "animation"));
    EXPECT_TRUE(isSameRole("Notification", "event"));
    EXPECT_TRUE(isSameRole("communication", "Phone"));
    EXPECT_FALSE(isSameRole("", "video")) << "no role is not a role";
    EXPECT_EQ(streamRole("Movie"), "video");
    EXPECT_EQ(streamRole("call"), "phone");
    EXPECT_EQ(streamRole("game"), "game");
}

TEST(RouteName, IsSpeakerForADeviceThatSaysNothing) {
    EXPECT_EQ(routeOfDevice({}), "Speaker");
}

TEST(RouteName, NamesBluetoothByItsProfileInEitherSpelling) {
    for (const char* profile : {"a2dp_sink", "a2dp-sink", "", "unheard-of"})
        EXPECT_EQ(routeOfDevice({.bus = "bluetooth", .bluetoothProfile = profile}), "HeadphonesBT")
            << profile;
    for (const char* profile :
         {"headset_head_unit", "headset-head-unit", "handsfree_head_unit", "handsfree-head-unit"})
        EXPECT_EQ(routeOfDevice({.bus = "bluetooth", .bluetoothProfile = profile}), "HeadsetBT")
            << profile;
}

TEST(RouteName, PutsTheBluetoothProfileBeforeThePort) {
    // Bluetooth devices report a headset's port in both profiles.
    EXPECT_EQ(routeOfDevice({.portType = PA_DEVICE_PORT_TYPE_HEADSET,
                             .bus = "bluetooth",
                             .bluetoothProfile = "a2dp-sink"}),
              "HeadphonesBT");
}

TEST(RouteName, NamesTheActivePort) {
    const std::pair<pa_device_port_type_t, const char*> expectations[] = {
        {PA_DEVICE_PORT_TYPE_SPEAKER, "Speaker"},   {PA_DEVICE_PORT_TYPE_HEADPHONES, "Headphones"},
        {PA_DEVICE_PORT_TYPE_HEADSET, "Headset"},   {PA_DEVICE_PORT_TYPE_HDMI, "HDMI"},
        {PA_DEVICE_PORT_TYPE_LINE, "Line Out"},     {PA_DEVICE_PORT_TYPE_EARPIECE, "Earpiece"},
        {PA_DEVICE_PORT_TYPE_HANDSET, "Earpiece"},  {PA_DEVICE_PORT_TYPE_USB, "USB Audio"},
        {PA_DEVICE_PORT_TYPE_SPDIF, "Digital Out"}, {PA_DEVICE_PORT_TYPE_NETWORK, "Network"},
        {PA_DEVICE_PORT_TYPE_HANDSFREE, "Headset"}, {PA_DEVICE_PORT_TYPE_TV, "HDMI"},
    };
    for (const auto& [type, name] : expectations)
        EXPECT_EQ(routeOfDevice({.portType = type, .formFactor = "headphone", .bus = "usb"}), name);
}

TEST(RouteName, AsksTheFormFactorWhereThePortLeavesItOpen) {
    const std::pair<const char*, const char*> expectations[] = {
        {"internal", "Speaker"}, {"speaker", "Speaker"},    {"headphone", "Headphones"},
        {"headset", "Headset"},  {"hands-free", "Headset"}, {"handset", "Earpiece"},
        {"tv", "HDMI"},
    };
    for (const auto& [formFactor, name] : expectations) {
        EXPECT_EQ(routeOfDevice({.portType = PA_DEVICE_PORT_TYPE_ANALOG, .formFactor = formFactor}),
                  name);
        EXPECT_EQ(routeOfDevice({.formFactor = formFactor, .bus = "usb"}), name);
    }
}

TEST(RouteName, AsksTheBusLast) {
    EXPECT_EQ(routeOfDevice({.bus = "usb"}), "USB Audio");
    EXPECT_EQ(routeOfDevice({.formFactor = "hifi", .bus = "usb"}), "USB Audio");
    EXPECT_EQ(routeOfDevice({.bus = "pci"}), "Speaker");
    // A number that a newer server has a meaning for.
    EXPECT_EQ(routeOfDevice({.portType = 99, .bus = "usb"}), "USB Audio");
}

TEST(RouteName, NamesInputs) {
    EXPECT_EQ(routeOfInput({}), "Microphone");
    EXPECT_EQ(routeOfInput({.portType = PA_DEVICE_PORT_TYPE_MIC, .bus = "pci"}), "Microphone");
    EXPECT_EQ(routeOfInput({.portType = PA_DEVICE_PORT_TYPE_HEADSET, .bus = "usb"}), "Headset");
    EXPECT_EQ(routeOfInput({.formFactor = "headset"}), "Headset");
    EXPECT_EQ(routeOfInput({.bus = "usb"}), "USB Audio");
    EXPECT_EQ(routeOfInput({.bus = "bluetooth", .bluetoothProfile = "headset-head-unit"}),
              "HeadsetBT");
}
