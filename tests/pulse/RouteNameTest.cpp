#include "backends/pulse/RouteName.hpp"

#include <gtest/gtest.h>

using namespace pulse;

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
