#include "backends/pulse/Routes.hpp"

#include "backends/pulse/CategoryMapping.hpp"
#include "backends/pulse/Roles.hpp"
#include "backends/pulse/RouteName.hpp"
#include "backends/pulse/StreamGroups.hpp"

namespace pulse {
namespace {

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
    for (const Stream* stream : streamsOf(mirror, object))
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
