#include "backends/pulse/categories/CategoryMapping.hpp"

#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/categories/Routes.hpp"
#include "platform/celestial/AVSystemController.hpp"

#include <algorithm>
#include <array>
#include <string_view>

using namespace std::string_view_literals;

namespace pulse {
namespace {

using Found = std::optional<VolumeObject>;
using Kind = VolumeObject::Kind;

Found objectOf(const Device* sink) {
    if (!sink) return std::nullopt;
    return VolumeObject{Kind::Sink, sink->name};
}

Found ringtone(const ServerMirror& mirror) {
    if (const Device* sink = roleSinkFor(mirror, {"notification"sv, "ringing"sv, "ringtone"sv}))
        return objectOf(sink);
    return VolumeObject{Kind::Role, "event"};
}

Found media(const ServerMirror& mirror) {
    const Device* sink = roleSinkFor(mirror, {"multimedia"sv});
    return objectOf(sink ? sink : mirror.defaultSink());
}

Found bluetooth(const ServerMirror& mirror, std::string_view route) {
    const auto fits = [&](const Device& sink) {
        return isBluetooth(sink) && routeOfDevice(sink) == route;
    };
    if (fits(*mirror.defaultSink())) return objectOf(mirror.defaultSink());
    const auto found =
        std::ranges::find_if(mirror.sinks, [&](const auto& each) { return fits(each.second); });
    return objectOf(found == mirror.sinks.end() ? nullptr : &found->second);
}

Found headset(const ServerMirror& mirror) {
    return bluetooth(mirror, "HeadsetBT");
}

Found headphones(const ServerMirror& mirror) {
    return bluetooth(mirror, "HeadphonesBT");
}

Found phoneCall(const ServerMirror& mirror) {
    if (const Device* sink = roleSinkFor(mirror, {"call"sv, "phone"sv, "communication"sv}))
        return objectOf(sink);
    return VolumeObject{Kind::Role, "phone"};
}

Found videoConference(const ServerMirror& /*mirror*/) {
    return VolumeObject{Kind::Conference, ""};
}

struct Mapping {
    std::string_view category;
    Found (*object)(const ServerMirror&);
};

constexpr Mapping mappings[] = {
    {AudioCategory::ringtone, ringtone},   {AudioCategory::audioVideo, media},
    {AudioCategory::headsetBT, headset},   {AudioCategory::headphonesBT, headphones},
    {AudioCategory::phoneCall, phoneCall}, {AudioCategory::videoConference, videoConference},
};

const Mapping* mappingFor(const std::string& category) {
    const auto* found = std::ranges::find(mappings, category, &Mapping::category);
    return found == std::end(mappings) ? nullptr : found;
}

Found namedRole(const ServerMirror& mirror, const std::string& role) {
    if (!mirror.defaultSink()) return std::nullopt;
    if (const Device* sink = roleSinkFor(mirror, {role})) return objectOf(sink);
    return VolumeObject{Kind::Role, std::string(streamRole(role))};
}

Found namedSink(const ServerMirror& mirror, const std::string& name) {
    if (name == "@REAL@"sv) return objectOf(realSinkBehind(mirror, mirror.defaultSink()));
    return objectOf(name == "@DEFAULT_SINK@"sv ? mirror.defaultSink() : mirror.sinkNamed(name));
}

Found namedSource(const ServerMirror& mirror, const std::string& name) {
    const std::string& wanted =
        name == "@DEFAULT_SOURCE@"sv ? mirror.server.defaultSourceName : name;
    if (!mirror.sourceNamed(wanted)) return std::nullopt;
    return VolumeObject{Kind::Source, wanted};
}

Found application(const ServerMirror& /*mirror*/, const std::string& name) {
    return VolumeObject{Kind::Application, name};
}

struct Scheme {
    std::string_view prefix;
    Found (*object)(const ServerMirror&, const std::string& name);
};

constexpr Scheme schemes[] = {
    {"role:", namedRole}, {"sink:", namedSink}, {"source:", namedSource}, {"app:", application}};

const Scheme* schemeOf(const std::string& category) {
    const auto* found = std::ranges::find_if(schemes, [&](const Scheme& scheme) {
        return category.starts_with(scheme.prefix) && category.size() > scheme.prefix.size();
    });
    return found == std::end(schemes) ? nullptr : found;
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

bool isCategory(const NSString& category) {
    return category && (mappingFor(*category) || schemeOf(*category));
}

Found objectForCategory(const ServerMirror& mirror, const NSString& category) {
    if (!category) return std::nullopt;
    // Without a real device the server accepts volumes but does not keep them.
    if (const Mapping* mapping = mappingFor(*category))
        return mirror.defaultSink() ? mapping->object(mirror) : std::nullopt;
    const Scheme* scheme = schemeOf(*category);
    return scheme ? scheme->object(mirror, category->substr(scheme->prefix.size())) : std::nullopt;
}

std::string categoryNaming(const VolumeObject& object) {
    switch (object.kind) {
        case Kind::Sink:
            return "sink:" + object.name;
        case Kind::Source:
            return "source:" + object.name;
        case Kind::Role:
            return "role:" + object.name;
        case Kind::Application:
            return "app:" + object.name;
        case Kind::Conference:
            return AudioCategory::videoConference;
    }
    return object.name;
}

Consequence consequenceOf(const CategoryState& before, const CategoryState& now) {
    return before == now ? Consequence::None : consequenceOfAnswering(now);
}

Consequence consequenceOfAnswering(const CategoryState& now) {
    return now.volume ? Consequence::Volume : Consequence::Reread;
}

}  // namespace pulse
