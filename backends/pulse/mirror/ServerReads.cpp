#include "backends/pulse/mirror/ServerReads.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>
#include <pulse/proplist.h>

#include <utility>

namespace pulse {
namespace {

std::string textOf(const char* text) {
    return text ? text : "";
}

// Empty if the property is missing or is not text.
std::string property(pa_proplist* properties, const char* key) {
    return properties ? textOf(pa_proplist_gets(properties, key)) : "";
}

std::string firstOf(pa_proplist* properties, const char* key, const char* otherKey) {
    std::string value = property(properties, key);
    return value.empty() ? property(properties, otherKey) : value;
}

bool isMonitor(const pa_sink_info& /*sink*/) {
    return false;
}

bool isMonitor(const pa_source_info& source) {
    return source.monitor_of_sink != PA_INVALID_INDEX;
}

constexpr int suspended = PA_SINK_SUSPENDED;
static_assert(suspended == static_cast<int>(PA_SOURCE_SUSPENDED));

template <class Info>
Device deviceOf(const Info& info) {
    Device device;
    device.name = textOf(info.name);
    device.description = textOf(info.description);
    device.iconName = property(info.proplist, PA_PROP_DEVICE_ICON_NAME);
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
    device.isOurOutput = property(info.proplist, ourOutputProperty) == "true";
    device.isMonitor = isMonitor(info);
    device.ownerModule = info.owner_module;
    device.index = info.index;
    return device;
}

template <class Info>
void addDevice(DeviceMap& devices, const Info& info) {
    if (info.name) devices.insert_or_assign(info.name, deviceOf(info));
}

// One item of a list, its end (above 0) or its failure (below).
template <class List, class Info>
void gather(pa_context*, const Info* info, int end, void* userdata) {
    auto& query = *static_cast<Query<List>*>(userdata);
    if (end < 0)
        query.fail();
    else if (end > 0)
        query.succeed();
    else if (info)
        add(query.result, *info);
}

void takeServer(pa_context*, const pa_server_info* info, void* userdata) {
    auto& query = *static_cast<Query<ServerInfo>*>(userdata);
    if (!info) return query.fail();
    query.result = copyOf(*info);
    query.succeed();
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

void add(SinkInputList& streams, const pa_sink_input_info& info) {
    SinkInput stream;
    stream.index = info.index;
    stream.sinkIndex = info.sink;
    stream.volume = info.volume;
    stream.mute = info.mute ? Mute::On : Mute::Off;
    stream.hasVolume = info.has_volume && info.volume_writable;
    stream.role = property(info.proplist, PA_PROP_MEDIA_ROLE);
    stream.applicationName = property(info.proplist, PA_PROP_APPLICATION_NAME);
    stream.applicationId = property(info.proplist, PA_PROP_APPLICATION_ID);
    stream.binary = property(info.proplist, PA_PROP_APPLICATION_PROCESS_BINARY);
    stream.iconName = property(info.proplist, PA_PROP_APPLICATION_ICON_NAME);
    stream.processId = property(info.proplist, PA_PROP_APPLICATION_PROCESS_ID);
    stream.nodeName = property(info.proplist, "node.name");
    stream.linkGroup = property(info.proplist, "node.link-group");
    stream.clientIndex = info.client;
    stream.ownerModule = info.owner_module;
    streams.push_back(std::move(stream));
}

void add(SourceOutputList& recordings, const pa_source_output_info& info) {
    recordings.push_back({property(info.proplist, PA_PROP_APPLICATION_PROCESS_ID), info.client});
}

void add(RestoreEntryMap& entries, const pa_ext_stream_restore_info& info) {
    if (!info.name) return;
    entries.insert_or_assign(info.name, RestoreEntry{info.volume, info.mute ? Mute::On : Mute::Off,
                                                     textOf(info.device)});
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

void readServer(PulseContext& context, Query<ServerInfo>::Done done) {
    context.ask<ServerInfo>("itself", std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_server_info(server, takeServer, query);
    });
}

void readSinks(PulseContext& context, Query<DeviceMap>::Done done) {
    context.ask<DeviceMap>("its sinks", std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_sink_info_list(server, gather<DeviceMap>, query);
    });
}

void readSources(PulseContext& context, Query<DeviceMap>::Done done) {
    context.ask<DeviceMap>("its sources", std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_source_info_list(server, gather<DeviceMap>, query);
    });
}

void readClients(PulseContext& context, Query<ClientMap>::Done done) {
    context.ask<ClientMap>("its clients", std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_client_info_list(server, gather<ClientMap>, query);
    });
}

void readSinkInputs(PulseContext& context, Query<SinkInputList>::Done done) {
    context.ask<SinkInputList>("its streams", std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_sink_input_info_list(server, gather<SinkInputList>, query);
    });
}

void readSourceOutputs(PulseContext& context, Query<SourceOutputList>::Done done) {
    context.ask<SourceOutputList>(
        "its recordings", std::move(done), [](pa_context* server, void* query) {
            return pa_context_get_source_output_info_list(server, gather<SourceOutputList>, query);
        });
}

void readRestoreEntries(PulseContext& context, Query<RestoreEntryMap>::Done done) {
    context.ask<RestoreEntryMap>(
        "its stored volumes", std::move(done), [](pa_context* server, void* query) {
            return pa_ext_stream_restore_read(server, gather<RestoreEntryMap>, query);
        });
}

}  // namespace pulse
