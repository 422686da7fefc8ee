#include "backends/pulse/ServerAnswers.hpp"

#include <pulse/proplist.h>

namespace pulse {
namespace {

std::string textOf(const char* text) {
    return text ? text : "";
}

// A missing property is empty, and so is one that isn't text.
std::string property(const pa_sink_info& info, const char* key) {
    return info.proplist ? textOf(pa_proplist_gets(info.proplist, key)) : "";
}

}  // namespace

Sink copyOf(const pa_sink_info& info) {
    Sink sink;
    sink.name = textOf(info.name);
    sink.volume = info.volume;
    sink.mute = info.mute ? Mute::On : Mute::Off;
    if (info.active_port) sink.portType = info.active_port->type;
    sink.formFactor = property(info, PA_PROP_DEVICE_FORM_FACTOR);
    sink.bus = property(info, PA_PROP_DEVICE_BUS);
    sink.bluetoothProfile = property(info, "bluetooth.protocol");
    if (sink.bluetoothProfile.empty()) sink.bluetoothProfile = property(info, "api.bluez5.profile");
    return sink;
}

RoleEntry copyOf(const pa_ext_stream_restore_info& info) {
    return {info.volume, info.mute ? Mute::On : Mute::Off, textOf(info.device)};
}

}  // namespace pulse
