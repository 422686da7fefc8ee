#include "backends/pulse/MirrorReader.hpp"

#include <algorithm>
#include <utility>

namespace pulse {

MirrorReader::MirrorReader(PulseContext& context, ServerMirror& mirror,
                           std::function<void()> changed)
    : context_(context), mirror_(mirror), changed_(std::move(changed)) {
    for (Part part : {Part::Server, Part::Sinks, Part::RoleEntries})
        refresh(part);
}

void MirrorReader::refresh(Part part, std::function<void()> afterwards) {
    Reading& reading = readingOf(part);
    if (afterwards) reading.waitingForNext.push_back(std::move(afterwards));
    if (reading.stage == Reading::Stage::Idle)
        begin(part);
    else
        reading.stage = Reading::Stage::UnderWayAndOutdated;
}

bool MirrorReader::isComplete() const {
    return std::all_of(readings_.begin(), readings_.end(),
                       [](const Reading& reading) { return reading.wasRead; });
}

void MirrorReader::begin(Part part) {
    Reading& reading = readingOf(part);
    reading.stage = Reading::Stage::UnderWay;
    reading.waitingForThis = std::exchange(reading.waitingForNext, {});
    ask(part);
}

void MirrorReader::ask(Part part) {
    switch (part) {
        case Part::Server:
            return context_.readDefaultSinkName([this](std::optional<std::string> name) {
                mirror_.defaultSinkName = std::move(name).value_or("");
                finish(Part::Server);
            });
        case Part::Sinks:
            return context_.readSinks([this](std::optional<PulseContext::Sinks> sinks) {
                mirror_.sinks = std::move(sinks).value_or(PulseContext::Sinks{});
                finish(Part::Sinks);
            });
        case Part::RoleEntries:
            return context_.readRoleEntries([this](std::optional<PulseContext::RoleEntries> read) {
                mirror_.roleEntries = std::move(read);
                finish(Part::RoleEntries);
            });
    }
}

void MirrorReader::finish(Part part) {
    Reading& reading = readingOf(part);
    const bool outdated = reading.stage == Reading::Stage::UnderWayAndOutdated;
    reading.stage = Reading::Stage::Idle;
    reading.wasRead = true;
    const Waiting waited = std::exchange(reading.waitingForThis, {});
    if (outdated) begin(part);
    for (const auto& afterwards : waited)
        afterwards();
    changed_();
}

}  // namespace pulse
