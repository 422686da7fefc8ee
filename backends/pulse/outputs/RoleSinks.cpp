#include "backends/pulse/outputs/RoleSinks.hpp"

#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/mirror/ServerReads.hpp"

#include <algorithm>

namespace pulse {
namespace {

constexpr const char* namePrefix = "input.loopback.sink.role.";

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

}  // namespace

std::string RoleSink::name() const {
    return namePrefix + std::string(role);
}

std::vector<std::string> RoleSink::intendedRoles() const {
    std::vector<std::string> all;
    for (std::string word : namesInList(std::string(streamRoles))) {
        all.push_back(word);
        word.front() = static_cast<char>(word.front() - 'a' + 'A');
        all.push_back(word);
    }
    return all;
}

std::string moduleArguments(const RoleSink& sink, const ServerMirror& mirror,
                            const std::string& real) {
    const std::string common =
        "sink_name=" + sink.name() + " channels=2 channel_map=front-left,front-right";
    const std::string described = " sink_properties=\"device.description='" +
                                  std::string(sink.description) + "' " + ourOutputProperty +
                                  "=true ";
    if (!mirror.server.pipeWire)
        return common + " master=" + real + described + "device.intended_roles='" +
               std::string(sink.streamRoles) + "' device.icon_name=audio-speakers\"";
    const std::string roles = joined(sink.intendedRoles());
    return common + " node.link-group=" + roleSinkLinkGroup + described +
           "device.intended-roles='" + (mirror.readsRolesAsArray() ? "[ " + roles + " ]" : roles) +
           "' device.icon-name=audio-speakers priority.session=1 policy.role-based.priority=" +
           std::to_string(sink.priority) + "\"";
}

const Device* deviceOf(const RoleSink& sink, const ServerMirror& mirror) {
    const Device* device = mirror.sinkNamed(sink.name());
    return device && device->isOurOutput ? device : nullptr;
}

bool hasForeignRoleSinks(const ServerMirror& mirror) {
    return std::ranges::any_of(mirror.sinks, [](const auto& each) {
        return isRoleSink(each.second) && !each.second.isOurOutput;
    });
}

const RoleSink& roleSinkOf(const SinkInput& stream) {
    const auto* found = std::ranges::find_if(roleSinks, [&](const RoleSink& sink) {
        return std::ranges::any_of(
            namesInList(std::string(sink.streamRoles)),
            [&](const std::string& role) { return isSameName(role, stream.role); });
    });
    return found == roleSinks.end() ? mediaSink : *found;
}

std::vector<StrayStream> strayStreams(const ServerMirror& mirror) {
    std::vector<StrayStream> strays;
    for (const SinkInput& stream : mirror.sinkInputs) {
        const RoleSink& sink = roleSinkOf(stream);
        const Device* device = deviceOf(sink, mirror);
        if (!isPlumbing(stream) && device && mirror.sinkOf(stream) &&
            stream.sinkIndex != device->index)
            strays.push_back({&stream, &sink});
    }
    return strays;
}

}  // namespace pulse
