#include "backends/pulse/categories/Routes.hpp"

#include "backends/pulse/categories/CategoryMapping.hpp"
#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/categories/StreamGroups.hpp"

#include <algorithm>
#include <string_view>

using namespace std::string_view_literals;

namespace pulse {
namespace {

const char* nameOfBluetooth(std::string profile) {
    std::replace(profile.begin(), profile.end(), '_', '-');
    const bool calls = profile.starts_with("headset"sv) || profile.starts_with("handsfree"sv);
    return calls ? "HeadsetBT" : "HeadphonesBT";
}

// nullptr for port types that do not say what is plugged in.
const char* nameOfPortType(int type) {
    switch (type) {
        case PA_DEVICE_PORT_TYPE_SPEAKER:
            return "Speaker";
        case PA_DEVICE_PORT_TYPE_HEADPHONES:
            return "Headphones";
        case PA_DEVICE_PORT_TYPE_HEADSET:
        case PA_DEVICE_PORT_TYPE_HANDSFREE:
            return "Headset";
        case PA_DEVICE_PORT_TYPE_HDMI:
        case PA_DEVICE_PORT_TYPE_TV:
            return "HDMI";
        case PA_DEVICE_PORT_TYPE_LINE:
        case PA_DEVICE_PORT_TYPE_AUX:
            return "Line Out";
        case PA_DEVICE_PORT_TYPE_EARPIECE:
        case PA_DEVICE_PORT_TYPE_HANDSET:
            return "Earpiece";
        case PA_DEVICE_PORT_TYPE_USB:
            return "USB Audio";
        case PA_DEVICE_PORT_TYPE_SPDIF:
            return "Digital Out";
        case PA_DEVICE_PORT_TYPE_NETWORK:
            return "Network";
        default:
            return nullptr;
    }
}

const char* nameOfFormFactor(std::string_view formFactor) {
    if (formFactor == "internal"sv || formFactor == "speaker"sv) return "Speaker";
    if (formFactor == "headphone"sv) return "Headphones";
    if (formFactor == "headset"sv || formFactor == "hands-free"sv) return "Headset";
    if (formFactor == "handset"sv) return "Earpiece";
    if (formFactor == "tv"sv) return "HDMI";
    return nullptr;
}

std::string routeOfSink(const ServerMirror& mirror, const Device* sink) {
    static const Device unknown;
    const Device* real = realSinkBehind(mirror, sink);
    return routeOfDevice(real ? *real : unknown);
}

const Device* sinkOfNextStream(const ServerMirror& mirror, const VolumeObject& object) {
    if (object.kind != VolumeObject::Kind::Role) return nullptr;
    return mirror.sinkNamed(mirror.rememberedDevice(roleEntryName(object.name)));
}

std::string routeOfStreams(const ServerMirror& mirror, const VolumeObject& object) {
    for (const SinkInput* stream : streamsOf(mirror, object))
        if (const Device* sink = mirror.sinkOf(*stream)) return routeOfSink(mirror, sink);
    const Device* remembered = sinkOfNextStream(mirror, object);
    return routeOfSink(mirror, remembered ? remembered : mirror.defaultSink());
}

bool namesADevice(const std::string& category) {
    return category.starts_with("sink:") || category.starts_with("source:");
}

NSString routeWithoutObject(const ServerMirror& mirror, const NSString& category) {
    if (!isCategory(category) || namesADevice(*category)) return std::nullopt;
    return routeOfSink(mirror, mirror.defaultSink());
}

}  // namespace

bool isBluetooth(const Device& device) {
    return device.bus == "bluetooth"sv;
}

std::string routeOfDevice(const Device& sink) {
    if (isBluetooth(sink)) return nameOfBluetooth(sink.bluetoothProfile);
    if (const char* name = nameOfPortType(sink.portType)) return name;
    if (const char* name = nameOfFormFactor(sink.formFactor)) return name;
    return sink.bus == "usb"sv ? "USB Audio" : "Speaker";
}

std::string routeOfInput(const Device& source) {
    if (isBluetooth(source)) return nameOfBluetooth(source.bluetoothProfile);
    const bool isHeadset =
        source.portType == PA_DEVICE_PORT_TYPE_HEADSET || source.formFactor == "headset"sv;
    if (isHeadset) return "Headset";
    return source.bus == "usb"sv ? "USB Audio" : "Microphone";
}

NSString routeForCategory(const ServerMirror& mirror, const NSString& category) {
    return routeForCategory(mirror, category, objectForCategory(mirror, category));
}

NSString routeForCategory(const ServerMirror& mirror, const NSString& category,
                          const std::optional<VolumeObject>& object) {
    if (!object) return routeWithoutObject(mirror, category);
    if (object->kind == VolumeObject::Kind::Sink)
        return routeOfSink(mirror, mirror.sinkNamed(object->name));
    if (object->kind == VolumeObject::Kind::Source)
        return routeOfInput(*mirror.sourceNamed(object->name));
    return routeOfStreams(mirror, *object);
}

}  // namespace pulse
