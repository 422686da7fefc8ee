#include "backends/pulse/CategoryMapping.hpp"

#include "backends/pulse/RouteName.hpp"

#include <algorithm>

namespace pulse {
namespace {

std::optional<VolumeObject> defaultSinkObject(const ServerMirror& mirror) {
    const Sink* sink = mirror.defaultSink();
    if (!sink) return std::nullopt;
    return VolumeObject{VolumeObject::Kind::Sink, sink->name};
}

// Without a real device the server accepts a role's volume and forgets it, so there is none.
std::optional<VolumeObject> eventEntryObject(const ServerMirror& mirror) {
    if (!mirror.defaultSink() || !mirror.roleEntries) return std::nullopt;
    return VolumeObject{VolumeObject::Kind::RoleEntry, roleEntryName("event")};
}

std::optional<VolumeObject> noObject(const ServerMirror&) {
    return std::nullopt;
}

struct Mapping {
    const char* category;
    std::optional<VolumeObject> (*object)(const ServerMirror&);
};

constexpr Mapping mappings[] = {
    {"Ringtone", eventEntryObject}, {"Audio/Video", defaultSinkObject},
    {"HeadsetBT", noObject},        {"HeadphonesBT", noObject},
    {"PhoneCall", noObject},        {"VideoConference", noObject},
};

const Mapping* mappingFor(const NSString& category) {
    if (!category) return nullptr;
    const auto found = std::find_if(std::begin(mappings), std::end(mappings),
                                    [&](const Mapping& m) { return *category == m.category; });
    return found == std::end(mappings) ? nullptr : found;
}

}  // namespace

const std::vector<std::string>& knownCategories() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const Mapping& mapping : mappings)
            all.emplace_back(mapping.category);
        return all;
    }();
    return names;
}

std::optional<VolumeObject> objectForCategory(const ServerMirror& mirror,
                                              const NSString& category) {
    const Mapping* mapping = mappingFor(category);
    return mapping ? mapping->object(mirror) : std::nullopt;
}

NSString routeForCategory(const ServerMirror& mirror, const NSString& category) {
    if (!mappingFor(category)) return std::nullopt;
    const Sink* sink = mirror.defaultSink();
    return routeOfSink(sink ? *sink : Sink{});
}

Consequence consequenceOf(const CategoryState& before, const CategoryState& now) {
    if (before == now) return Consequence::None;
    return now.volume ? Consequence::Volume : Consequence::Reread;
}

}  // namespace pulse
