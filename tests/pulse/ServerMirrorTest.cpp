#include "backends/pulse/mirror/ServerMirror.hpp"
#include "backends/pulse/mirror/ServerReads.hpp"

#include <gtest/gtest.h>
#include <pulse/proplist.h>

#include <memory>

using namespace pulse;

namespace {

const Target event{.kind = Target::Kind::RestoreEntry, .name = roleEntryName("event")};

ServerMirror oneDevice() {
    ServerMirror mirror;
    mirror.server.defaultSinkName = "spk";
    mirror.sinks["spk"] = {.name = "spk", .volume = {2, {32768, 32768}}, .index = 3};
    mirror.restoreEntries.emplace();
    return mirror;
}

struct ListEnd {
    void operator()(pa_proplist* list) const { pa_proplist_free(list); }
};
using PropertyList = std::unique_ptr<pa_proplist, ListEnd>;

PropertyList listOf(std::initializer_list<std::pair<const char*, const char*>> properties) {
    PropertyList list(pa_proplist_new());
    for (const auto& [key, value] : properties)
        pa_proplist_sets(list.get(), key, value);
    return list;
}

}  // namespace

TEST(ServerMirror, AnswersADevicesVolumeAndMute) {
    ServerMirror mirror = oneDevice();
    mirror.sinks["spk"].mute = Mute::On;
    const auto found = mirror.volumeOf({.kind = Target::Kind::Sink, .name = "spk"});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->volume.values[1], 32768U);
    EXPECT_EQ(found->mute, Mute::On);
    EXPECT_FALSE(mirror.volumeOf({.kind = Target::Kind::Sink, .name = "gone"}));
    EXPECT_FALSE(mirror.volumeOf({.kind = Target::Kind::Source, .name = "spk"}));
}

TEST(ServerMirror, AnswersAStreamByItsIndexAndItsDeviceByThat) {
    ServerMirror mirror = oneDevice();
    mirror.sinkInputs.push_back({.index = 7, .sinkIndex = 3, .volume = {1, {1000}}});
    mirror.sinkInputs.push_back({.index = 8, .sinkIndex = 4});
    mirror.sinkInputs.push_back({.index = 9});
    EXPECT_EQ(
        mirror.volumeOf({.kind = Target::Kind::SinkInput, .sinkInputIndex = 7})->volume.values[0],
        1000U);
    EXPECT_FALSE(mirror.volumeOf({.kind = Target::Kind::SinkInput, .sinkInputIndex = 6}));
    ASSERT_TRUE(mirror.sinkOf(mirror.sinkInputs[0]));
    EXPECT_EQ(mirror.sinkOf(mirror.sinkInputs[0])->name, "spk");
    EXPECT_FALSE(mirror.sinkOf(mirror.sinkInputs[1]));
    EXPECT_FALSE(mirror.sinkOf(mirror.sinkInputs[2]));
}

TEST(ServerMirror, LacksTheClientsOfWhatDoesNotNameItsProcess) {
    ServerMirror mirror = oneDevice();
    mirror.sinkInputs = {{.processId = "10", .clientIndex = 1}, {}};
    EXPECT_FALSE(mirror.lacksClients());
    mirror.sourceOutputs = {{.clientIndex = 2}};
    EXPECT_TRUE(mirror.lacksClients());
    mirror.clients[2] = {};
    EXPECT_FALSE(mirror.lacksClients());
    mirror.sinkInputs.push_back({.clientIndex = 3});
    EXPECT_TRUE(mirror.lacksClients());
}

TEST(ServerMirror, TakesARoleThatNobodyTouchedAsFullInStereo) {
    ServerMirror mirror = oneDevice();
    const auto found = mirror.volumeOf(event);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->volume.channels, 2);
    EXPECT_EQ(found->volume.values[0], PA_VOLUME_NORM);
    EXPECT_EQ(found->mute, Mute::Off);
    EXPECT_EQ(mirror.rememberedDevice(event.name), "");
    mirror.restoreEntries.reset();
    EXPECT_FALSE(mirror.volumeOf(event));
    EXPECT_EQ(mirror.rememberedDevice(event.name), "");
}

TEST(ServerMirror, TakesARoleEntryWithoutAVolumeAsFullAndKeepsItsDevice) {
    ServerMirror mirror = oneDevice();
    (*mirror.restoreEntries)[event.name] = {.mute = Mute::On, .device = "hp"};
    EXPECT_EQ(mirror.volumeOf(event)->volume.values[0], PA_VOLUME_NORM);
    EXPECT_EQ(mirror.volumeOf(event)->mute, Mute::On);
    EXPECT_EQ(mirror.rememberedDevice(event.name), "hp");
}

TEST(ServerMirror, WidensAMonoRoleEntryToStereo) {
    ServerMirror mirror = oneDevice();
    (*mirror.restoreEntries)[event.name] = {.volume = {1, {1234}}};
    const auto found = mirror.volumeOf(event);
    EXPECT_EQ(found->volume.channels, 2);
    EXPECT_EQ(found->volume.values[0], 1234U);
    EXPECT_EQ(found->volume.values[1], 1234U);
}

TEST(PipeWireVersion, IsReadFromTheServersName) {
    EXPECT_EQ(pipeWireVersion("PulseAudio (on PipeWire 0.3.65)"), (Version{0, 3, 65}));
    EXPECT_EQ(pipeWireVersion("PulseAudio (on PipeWire 1.2)"), (Version{1, 2, 0}));
    EXPECT_EQ(pipeWireVersion("PulseAudio (on PipeWire )"), (Version{}));
    EXPECT_EQ(pipeWireVersion("pulseaudio"), std::nullopt);
    EXPECT_EQ(pipeWireVersion(""), std::nullopt);
    EXPECT_LT((Version{0, 3, 65}), (Version{1, 2, 0}));
    EXPECT_LT((Version{1, 0, 9}), (Version{1, 2, 0}));
}

TEST(ServerAnswers, TakesNamesFromBothKindsOfList) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(namesInList("phone music"), (Names{"phone", "music"}));
    EXPECT_EQ(namesInList(R"(["Music", "Movie"])"), (Names{"Music", "Movie"}));
    EXPECT_EQ(namesInList(R"([ "Music" ])"), Names{"Music"});
    for (const char* empty : {"", " ", "[]", "[\"", "[,,"})
        EXPECT_EQ(namesInList(empty), Names{}) << empty;
}

TEST(ServerAnswers, CopiesADevice) {
    const PropertyList properties = listOf({{"device.bus", "bluetooth"},
                                            {"api.bluez5.profile", "a2dp-sink"},
                                            {"device.form_factor", "headset"},
                                            {"device.intended_roles", "phone"},
                                            {"device.master_device", "spk"},
                                            {"node.link-group", "loopback-1"}});
    pa_sink_port_info port{};
    port.type = PA_DEVICE_PORT_TYPE_HEADSET;
    pa_sink_info info{};
    info.name = "buds";
    info.index = 5;
    info.mute = 1;
    info.active_port = &port;
    info.proplist = properties.get();
    DeviceMap devices;
    add(devices, info);
    const Device& device = devices.at("buds");
    EXPECT_EQ(device.index, 5U);
    EXPECT_EQ(device.mute, Mute::On);
    EXPECT_EQ(device.portType, PA_DEVICE_PORT_TYPE_HEADSET);
    EXPECT_EQ(device.bus, "bluetooth");
    EXPECT_EQ(device.bluetoothProfile, "a2dp-sink");
    EXPECT_EQ(device.formFactor, "headset");
    EXPECT_EQ(device.intendedRoles, std::vector<std::string>{"phone"});
    EXPECT_EQ(device.masterDevice, "spk");
    EXPECT_EQ(device.linkGroup, "loopback-1");
}

TEST(ServerAnswers, CopiesAStreamARecordingAndTheirClient) {
    const PropertyList properties = listOf({{"media.role", "event"},
                                            {"application.name", "Chat"},
                                            {"application.id", "org.chat"},
                                            {"application.process.binary", "chat"},
                                            {"application.process.id", "42"}});
    pa_sink_input_info info{};
    info.index = 5;
    info.sink = 3;
    info.client = 4;
    info.has_volume = 1;
    info.volume_writable = 1;
    info.proplist = properties.get();
    SinkInputList streams;
    add(streams, info);
    info.volume_writable = 0;
    add(streams, info);
    EXPECT_EQ(streams[0].index, 5U);
    EXPECT_EQ(streams[0].sinkIndex, 3U);
    EXPECT_EQ(streams[0].role, "event");
    EXPECT_EQ(streams[0].applicationName, "Chat");
    EXPECT_EQ(streams[0].applicationId, "org.chat");
    EXPECT_EQ(streams[0].binary, "chat");
    EXPECT_EQ(streams[0].processId, "42");
    EXPECT_EQ(streams[0].clientIndex, 4U);
    EXPECT_TRUE(streams[0].hasVolume);
    EXPECT_FALSE(streams[1].hasVolume);

    pa_source_output_info recording{};
    recording.proplist = properties.get();
    recording.client = 4;
    SourceOutputList recordings;
    add(recordings, recording);
    EXPECT_EQ(recordings[0].processId, "42");
    EXPECT_EQ(recordings[0].clientIndex, 4U);

    pa_client_info client{};
    client.index = 4;
    client.proplist = properties.get();
    ClientMap clients;
    add(clients, client);
    EXPECT_EQ(clients.at(4).processId, "42");
    EXPECT_EQ(clients.at(4).binary, "chat");
    EXPECT_EQ(clients.at(4).name, "Chat");
}

TEST(ServerMirror, KnowsWhichSessionManagerGivesARolesVolumeToItsStreams) {
    ServerMirror mirror;
    EXPECT_TRUE(mirror.givesEntryToStreams("phone"));
    const std::pair<const char*, bool> versions[] = {
        {"0.4.17", true}, {"0.5.0", false}, {"0.5.8", false}, {"1.0", false}, {"", true}};
    for (const auto& [version, gives] : versions) {
        mirror.clients[7] = {.name = "WirePlumber", .version = version};
        EXPECT_EQ(mirror.givesEntryToStreams("phone"), gives) << version;
        EXPECT_TRUE(mirror.givesEntryToStreams("event")) << version;
    }
}

TEST(ServerMirror, KnowsAMixerFromTheCommandLineTool) {
    ServerMirror mirror;
    mirror.clients[1] = {.binary = "tarnwickctl", .name = "Tarnwick"};
    mirror.clients[2] = {.binary = "player", .name = "Player"};
    EXPECT_FALSE(mirror.hasAnotherMixer());
    mirror.clients[3] = {.binary = "phosh", .name = "Tarnwick"};
    EXPECT_TRUE(mirror.hasAnotherMixer());
}

TEST(ServerAnswers, TakesWhatIsMissingAsEmptyAndLeavesOutTheNameless) {
    DeviceMap devices;
    add(devices, pa_sink_info{});
    add(devices, pa_source_info{});
    EXPECT_TRUE(devices.empty());
    RestoreEntryMap entries;
    add(entries, pa_ext_stream_restore_info{});
    EXPECT_TRUE(entries.empty());
    SinkInputList streams;
    add(streams, pa_sink_input_info{});
    EXPECT_EQ(streams[0].role, "");
    EXPECT_FALSE(streams[0].hasVolume);
    EXPECT_EQ(copyOf(pa_server_info{}).defaultSinkName, "");
}
