#include "tests/rigs/fakecard/Card.hpp"

#include <spa/monitor/utils.h>
#include <spa/param/profile.h>
#include <spa/param/props.h>
#include <spa/param/route.h>
#include <spa/pod/filter.h>
#include <spa/pod/iter.h>
#include <spa/pod/parser.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace {

constexpr int offProfile = 0;
// 40 %: what the session manager gives a device that it has not met.
constexpr float firstVolume = 0.4F * 0.4F * 0.4F;

std::vector<Port> firstPorts() {
    constexpr auto unknown = SPA_PARAM_AVAILABILITY_unknown;
    constexpr auto no = SPA_PARAM_AVAILABILITY_no;
    return {
        {"speaker", "Speaker", "speaker", 100, unknown, firstVolume},
        {"headphones", "Headphones", "headphones", 200, no, firstVolume},
        {"hdmi", "HDMI / DisplayPort", "hdmi", 150, no, firstVolume},
        {"lineout", "Line Out", "line", 140, no, firstVolume},
        {"earpiece", "Earpiece", "earpiece", 70, unknown, firstVolume},
    };
}

}  // namespace

struct Card::Methods {
    static int addListener(void* card, spa_hook* listener, const spa_device_events* events,
                           void* data) {
        return static_cast<Card*>(card)->addListener(listener, events, data);
    }
    static int sync(void* card, int sequence) {
        spa_device_emit_result(&static_cast<Card*>(card)->listeners_, sequence, 0, 0, nullptr);
        return 0;
    }
    static int enumerate(void* card, int sequence, uint32_t id, uint32_t start, uint32_t count,
                         const spa_pod* filter) {
        return static_cast<Card*>(card)->enumerate(sequence, id, start, count, filter);
    }
    static int set(void* card, uint32_t id, uint32_t, const spa_pod* parameter) {
        if (id == SPA_PARAM_Profile) return static_cast<Card*>(card)->setProfile(parameter);
        if (id == SPA_PARAM_Route) return static_cast<Card*>(card)->setRoute(parameter);
        return -ENOENT;
    }
    static constexpr spa_device_methods table{SPA_VERSION_DEVICE_METHODS, addListener, sync,
                                              enumerate, set};
};

Card::Card(const std::string& name) : ports_(firstPorts()) {
    properties_ = pw_properties_new(nullptr, nullptr);
    const std::pair<const char*, std::string> properties[] = {
        {"device.name", "card." + name}, {"device.description", "Fake card"},
        {"device.api", "fake"},          {"media.class", "Audio/Device"},
        {"device.bus", "pci"},
    };
    for (const auto& [key, value] : properties)
        pw_properties_set(properties_, key, value.c_str());
    spa_hook_list_init(&listeners_);
    device_.iface.type = SPA_TYPE_INTERFACE_Device;
    device_.iface.version = SPA_VERSION_DEVICE;
    device_.iface.cb = {&Methods::table, this};
    info_.version = SPA_VERSION_DEVICE_INFO;
    parameters_ = {{
        {SPA_PARAM_EnumProfile, SPA_PARAM_INFO_READ, 0, 0, {}},
        {SPA_PARAM_Profile, SPA_PARAM_INFO_READWRITE, 0, 0, {}},
        {SPA_PARAM_EnumRoute, SPA_PARAM_INFO_READ, 0, 0, {}},
        {SPA_PARAM_Route, SPA_PARAM_INFO_READWRITE, 0, 0, {}},
    }};
    info_.params = parameters_.data();
    info_.n_params = parameters_.size();
}

Card::~Card() {
    pw_properties_free(properties_);
}

bool Card::setAvailability(const std::string& port, spa_param_availability availability) {
    Port* found = portNamed(port);
    if (!found) return false;
    found->availability = availability;
    changed({SPA_PARAM_EnumRoute, SPA_PARAM_Route});
    return true;
}

bool Card::choosePort(const std::string& port) {
    const Port* found = portNamed(port);
    if (!found) return false;
    active_ = static_cast<std::size_t>(found - ports_.data());
    changed({SPA_PARAM_Route});
    return true;
}

void Card::setVolume(float linear) {
    ports_[active_].volume = linear;
    changed({SPA_PARAM_Route});
}

void Card::setMuted(bool muted) {
    ports_[active_].isMuted = muted;
    changed({SPA_PARAM_Route});
}

std::string Card::state() const {
    const Port& port = ports_[active_];
    char text[128];
    std::snprintf(text, sizeof text, "%s %.6f %s", port.name, port.volume,
                  port.isMuted ? "muted" : "unmuted");
    return text;
}

Port* Card::portNamed(const std::string& name) {
    const auto found = std::find_if(ports_.begin(), ports_.end(),
                                    [&](const Port& port) { return name == port.name; });
    return found == ports_.end() ? nullptr : &*found;
}

int Card::addListener(spa_hook* listener, const spa_device_events* events, void* data) {
    spa_hook_list others;
    spa_hook_list_isolate(&listeners_, &others, listener, events, data);
    const uint64_t mask = std::exchange(
        info_.change_mask, SPA_DEVICE_CHANGE_MASK_PROPS | SPA_DEVICE_CHANGE_MASK_PARAMS);
    emitInfo();
    info_.change_mask = mask;
    spa_hook_list_join(&listeners_, &others);
    return 0;
}

// A listener reads a kind of parameters anew when this bit of theirs turns.
void Card::changed(const std::vector<uint32_t>& ids) {
    for (spa_param_info& parameter : parameters_)
        if (std::count(ids.begin(), ids.end(), parameter.id))
            parameter.flags ^= SPA_PARAM_INFO_SERIAL;
    info_.change_mask = SPA_DEVICE_CHANGE_MASK_PARAMS;
    emitInfo();
    info_.change_mask = 0;
}

void Card::emitInfo() {
    info_.props = &properties_->dict;
    spa_device_emit_info(&listeners_, &info_);
}

int Card::setProfile(const spa_pod* parameter) {
    int profile = 0;
    if (!parameter || spa_pod_parse_object(parameter, SPA_TYPE_OBJECT_ParamProfile, nullptr,
                                           SPA_PARAM_PROFILE_index, SPA_POD_Int(&profile)) < 0)
        return -EINVAL;
    profile_ = profile == offProfile ? offProfile : soundProfile;
    changed({SPA_PARAM_Profile, SPA_PARAM_Route});
    return 0;
}

int Card::setRoute(const spa_pod* parameter) {
    int index = 0;
    spa_pod* properties = nullptr;
    bool save = false;
    if (!parameter ||
        spa_pod_parse_object(parameter, SPA_TYPE_OBJECT_ParamRoute, nullptr, SPA_PARAM_ROUTE_index,
                             SPA_POD_Int(&index), SPA_PARAM_ROUTE_props,
                             SPA_POD_OPT_Pod(&properties), SPA_PARAM_ROUTE_save,
                             SPA_POD_OPT_Bool(&save)) < 0 ||
        index < 0 || static_cast<std::size_t>(index) >= ports_.size())
        return -EINVAL;
    active_ = static_cast<std::size_t>(index);
    save_ = save;
    if (properties) takeProperties(*properties);
    changed({SPA_PARAM_Route});
    return 0;
}

void Card::takeProperties(const spa_pod& properties) {
    Port& port = ports_[active_];
    const auto* object = reinterpret_cast<const spa_pod_object*>(&properties);
    const spa_pod_prop* each = nullptr;
    SPA_POD_OBJECT_FOREACH(object, each) {
        if (each->key == SPA_PROP_mute) spa_pod_get_bool(&each->value, &port.isMuted);
        if (each->key != SPA_PROP_channelVolumes) continue;
        std::array<float, 64> volumes{};
        if (spa_pod_copy_array(&each->value, SPA_TYPE_Float, volumes.data(), volumes.size()) > 0)
            port.volume = volumes[0];
    }
}
