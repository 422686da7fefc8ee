#include "tests/rigs/fakecard/Card.hpp"

#include <spa/monitor/utils.h>
#include <spa/param/audio/raw.h>
#include <spa/param/profile.h>
#include <spa/param/props.h>
#include <spa/param/route.h>
#include <spa/pod/filter.h>

#include <cerrno>

// What the card answers when it is asked for its parameters.

namespace {

constexpr std::size_t longestParameterBytes = 4096;

void addIntegers(spa_pod_builder& builder, uint32_t key, int value) {
    spa_pod_builder_prop(&builder, key, 0);
    spa_pod_builder_array(&builder, sizeof value, SPA_TYPE_Int, 1, &value);
}

// A profile's one output, by the number that its node carries too.
void addClasses(spa_pod_builder& builder) {
    const int device = 0;
    spa_pod_frame all;
    spa_pod_frame one;
    spa_pod_builder_prop(&builder, SPA_PARAM_PROFILE_classes, 0);
    spa_pod_builder_push_struct(&builder, &all);
    spa_pod_builder_int(&builder, 1);
    spa_pod_builder_push_struct(&builder, &one);
    spa_pod_builder_string(&builder, "Audio/Sink");
    spa_pod_builder_int(&builder, 1);
    spa_pod_builder_string(&builder, "card.profile.devices");
    spa_pod_builder_array(&builder, sizeof device, SPA_TYPE_Int, 1, &device);
    spa_pod_builder_pop(&builder, &one);
    spa_pod_builder_pop(&builder, &all);
}

}  // namespace

int Card::enumerate(int sequence, uint32_t id, uint32_t start, uint32_t count,
                    const spa_pod* filter) {
    spa_result_device_params result{};
    result.id = id;
    result.next = start;
    for (uint32_t sent = 0; sent < count;) {
        std::array<uint8_t, longestParameterBytes> bytes;
        std::array<uint8_t, longestParameterBytes> filteredBytes;
        spa_pod_builder builder{};
        spa_pod_builder_init(&builder, bytes.data(), bytes.size());
        result.index = result.next++;
        const spa_pod* parameter = build(builder, id, result.index);
        if (!parameter) return 0;
        spa_pod_builder filtered{};
        spa_pod_builder_init(&filtered, filteredBytes.data(), filteredBytes.size());
        if (spa_pod_filter(&filtered, &result.param, parameter, filter) < 0) continue;
        spa_device_emit_result(&listeners_, sequence, 0, SPA_RESULT_TYPE_DEVICE_PARAMS, &result);
        ++sent;
    }
    return 0;
}

// nullptr past the last.
spa_pod* Card::build(spa_pod_builder& builder, uint32_t id, uint32_t index) const {
    constexpr uint32_t profileCount = 2;
    if (id == SPA_PARAM_EnumProfile && index < profileCount)
        return buildProfile(builder, id, static_cast<int>(index));
    if (id == SPA_PARAM_Profile && index == 0) return buildProfile(builder, id, profile_);
    if (id == SPA_PARAM_EnumRoute && index < ports_.size()) return buildRoute(builder, id, index);
    if (id == SPA_PARAM_Route && index == 0 && profile_ == soundProfile)
        return buildRoute(builder, id, static_cast<uint32_t>(active_));
    return nullptr;
}

spa_pod* Card::buildProfile(spa_pod_builder& builder, uint32_t id, int profile) const {
    const bool sounds = profile == soundProfile;
    spa_pod_frame object;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamProfile, id);
    spa_pod_builder_add(&builder, SPA_PARAM_PROFILE_index, SPA_POD_Int(profile),
                        SPA_PARAM_PROFILE_name, SPA_POD_String(sounds ? "HiFi" : "off"),
                        SPA_PARAM_PROFILE_description, SPA_POD_String(sounds ? "Sound" : "Off"),
                        SPA_PARAM_PROFILE_priority, SPA_POD_Int(sounds ? 100 : 0),
                        SPA_PARAM_PROFILE_available, SPA_POD_Id(SPA_PARAM_AVAILABILITY_yes), 0);
    if (sounds) addClasses(builder);
    if (id == SPA_PARAM_Profile)
        spa_pod_builder_add(&builder, SPA_PARAM_PROFILE_save, SPA_POD_Bool(false), 0);
    return static_cast<spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

spa_pod* Card::buildRoute(spa_pod_builder& builder, uint32_t id, uint32_t index) const {
    const Port& port = ports_[index];
    spa_pod_frame object;
    spa_pod_frame info;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_ParamRoute, id);
    spa_pod_builder_add(&builder, SPA_PARAM_ROUTE_index, SPA_POD_Int(static_cast<int>(index)),
                        SPA_PARAM_ROUTE_direction, SPA_POD_Id(SPA_DIRECTION_OUTPUT),
                        SPA_PARAM_ROUTE_name, SPA_POD_String(port.name),
                        SPA_PARAM_ROUTE_description, SPA_POD_String(port.description),
                        SPA_PARAM_ROUTE_priority, SPA_POD_Int(port.priority),
                        SPA_PARAM_ROUTE_available, SPA_POD_Id(port.availability), 0);
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_info, 0);
    spa_pod_builder_push_struct(&builder, &info);
    spa_pod_builder_int(&builder, 1);
    spa_pod_builder_string(&builder, "port.type");
    spa_pod_builder_string(&builder, port.type);
    spa_pod_builder_pop(&builder, &info);
    addIntegers(builder, SPA_PARAM_ROUTE_profiles, soundProfile);
    addIntegers(builder, SPA_PARAM_ROUTE_devices, 0);
    if (id == SPA_PARAM_Route) addRouteState(builder, id, port);
    return static_cast<spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

void Card::addRouteState(spa_pod_builder& builder, uint32_t id, const Port& port) const {
    const std::array<float, 2> volumes{port.volume, port.volume};
    const std::array<uint32_t, 2> channels{SPA_AUDIO_CHANNEL_FL, SPA_AUDIO_CHANNEL_FR};
    spa_pod_frame properties;
    spa_pod_builder_add(&builder, SPA_PARAM_ROUTE_device, SPA_POD_Int(0), SPA_PARAM_ROUTE_profile,
                        SPA_POD_Int(profile_), SPA_PARAM_ROUTE_save, SPA_POD_Bool(save_), 0);
    spa_pod_builder_prop(&builder, SPA_PARAM_ROUTE_props, 0);
    spa_pod_builder_push_object(&builder, &properties, SPA_TYPE_OBJECT_Props, id);
    spa_pod_builder_add(&builder, SPA_PROP_mute, SPA_POD_Bool(port.isMuted), SPA_PROP_volumeBase,
                        SPA_POD_Float(1.0), SPA_PROP_volumeStep, SPA_POD_Float(1.0 / 65536), 0);
    for (const uint32_t key : {SPA_PROP_channelVolumes, SPA_PROP_softVolumes}) {
        spa_pod_builder_prop(&builder, key, 0);
        spa_pod_builder_array(&builder, sizeof(float), SPA_TYPE_Float, 2, volumes.data());
    }
    spa_pod_builder_prop(&builder, SPA_PROP_channelMap, 0);
    spa_pod_builder_array(&builder, sizeof(uint32_t), SPA_TYPE_Id, 2, channels.data());
    spa_pod_builder_pop(&builder, &properties);
}
