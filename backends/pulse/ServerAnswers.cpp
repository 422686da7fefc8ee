#include "backends/pulse/ServerAnswers.hpp"

#include <pulse/proplist.h>

#include <utility>

namespace pulse {
namespace {

std::string textOf(const char* text) {
    return text ? text : "";
}

// A missing property is empty, and so is one that isn't text.
std::string property(pa_proplist* properties, const char* key) {
    return properties ? textOf(pa_proplist_gets(properties, key)) : "";
}

std::string firstOf(pa_proplist* properties, const char* key, const char* otherKey) {
    std::string value = property(properties, key);
    return value.empty() ? property(properties, otherKey) : value;
}

constexpr int suspended = PA_SINK_SUSPENDED;
static_assert(suspended == static_cast<int>(PA_SOURCE_SUSPENDED));

template <class Info>
Device deviceOf(const Info& info) {
    Device device;
    device.name = textOf(info.name);
    device.volume = info.volume;
    device.mute = info.mute ? Mute::On : Mute::Off;
    if (info.active_port) device.portType = info.active_port->type;
    device.formFactor = property(info.proplist, PA_PROP_DEVICE_FORM_FACTOR);
    device.bus = property(info.proplist, PA_PROP_DEVICE_BUS);
    device.bluetoothProfile = firstOf(info.proplist, "bluetooth.protocol", "api.bluez5.profile");
    device.intendedRoles = namesInList(property(info.proplist, PA_PROP_DEVICE_INTENDED_ROLES));
    device.masterDevice = property(info.proplist, PA_PROP_DEVICE_MASTER_DEVICE);
    device.linkGroup = property(info.proplist, "node.link-group");
    device.isSuspended = static_cast<int>(info.state) == suspended;
    device.isOfCard = info.card != PA_INVALID_INDEX;
    device.index = info.index;
    return device;
}

template <class Info>
void addDevice(DeviceMap& devices, const Info& info) {
    if (info.name) devices.insert_or_assign(info.name, deviceOf(info));
}

}  // namespace

void add(DeviceMap& devices, const pa_sink_info& info) {
    addDevice(devices, info);
}

void add(DeviceMap& devices, const pa_source_info& info) {
    addDevice(devices, info);
}

void add(ClientMap& clients, const pa_client_info& info) {
    const auto text = [&](const char* key) { return property(info.proplist, key); };
    clients.insert_or_assign(
        info.index,
        Client{text(PA_PROP_APPLICATION_PROCESS_ID), text(PA_PROP_APPLICATION_PROCESS_BINARY),
               text(PA_PROP_APPLICATION_NAME), text(PA_PROP_APPLICATION_VERSION)});
}

void add(StreamList& streams, const pa_sink_input_info& info) {
    Stream stream;
    stream.index = info.index;
    stream.sinkIndex = info.sink;
    stream.volume = info.volume;
    stream.mute = info.mute ? Mute::On : Mute::Off;
    stream.hasVolume = info.has_volume && info.volume_writable;
    stream.role = property(info.proplist, PA_PROP_MEDIA_ROLE);
    stream.applicationName = property(info.proplist, PA_PROP_APPLICATION_NAME);
    stream.applicationId = property(info.proplist, PA_PROP_APPLICATION_ID);
    stream.binary = property(info.proplist, PA_PROP_APPLICATION_PROCESS_BINARY);
    stream.processId = property(info.proplist, PA_PROP_APPLICATION_PROCESS_ID);
    stream.nodeName = property(info.proplist, "node.name");
    stream.linkGroup = property(info.proplist, "node.link-group");
    stream.clientIndex = info.client;
    streams.push_back(std::move(stream));
}

void add(RecordingList& recordings, const pa_source_output_info& info) {
    recordings.push_back({property(info.proplist, PA_PROP_APPLICATION_PROCESS_ID), info.client});
}

void add(RoleEntryMap& entries, const pa_ext_stream_restore_info& info) {
    if (!info.name) return;
    entries.insert_or_assign(
        info.name, RoleEntry{info.volume, info.mute ? Mute::On : Mute::Off, textOf(info.device)});
}

ServerInfo copyOf(const pa_server_info& info) {
    return {textOf(info.default_sink_name), textOf(info.default_source_name),
            pipeWireVersion(textOf(info.server_name))};
}

std::vector<std::string> namesInList(const std::string& text) {
    static const std::string separators = " \t\n,;[]\"";
    std::vector<std::string> names;
    for (std::size_t end = 0;;) {
        const std::size_t begin = text.find_first_not_of(separators, end);
        if (begin == std::string::npos) return names;
        end = text.find_first_of(separators, begin);
        names.push_back(text.substr(begin, end - begin));
        if (end == std::string::npos) return names;
    }
}

}  // namespace pulse
