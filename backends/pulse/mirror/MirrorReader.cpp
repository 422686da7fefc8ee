#include "backends/pulse/mirror/MirrorReader.hpp"

#include "backends/pulse/mirror/ServerReads.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

namespace pulse {

MirrorReader::MirrorReader(PulseContext& context, ServerMirror& mirror,
                           std::function<void(Part)> changed)
    : context_(context), mirror_(mirror), changed_(std::move(changed)) {
    for (std::size_t part = 0; part < partCount; ++part)
        begin(static_cast<Part>(part));
}

void MirrorReader::refresh(Part part) {
    Reading& reading = readingOf(part);
    if (reading.stage == Reading::Stage::UnderWay)
        reading.stage = Reading::Stage::UnderWayAndOutdated;
    if (reading.stage == Reading::Stage::Idle) beginSoon(part);
}

void MirrorReader::hold(const std::vector<Part>& parts) {
    for (const Part part : parts) {
        Reading& reading = readingOf(part);
        reading.heldUntilSeconds = NSRunLoop::mainRunLoop().currentTime() + heldSeconds;
        if (reading.stage == Reading::Stage::Pausing) beginSoon(part);
    }
}

void MirrorReader::refresh(const std::vector<Part>& parts,
                           const std::function<void()>& afterwards) {
    const auto left = std::make_shared<std::size_t>(parts.size());
    for (const Part part : parts) {
        Reading& reading = readingOf(part);
        reading.waitingForNext.emplace_back([left, afterwards] {
            if (--*left == 0) afterwards();
        });
        if (reading.stage == Reading::Stage::Pausing) reading.stage = Reading::Stage::Idle;
        if (reading.stage == Reading::Stage::Idle)
            begin(part);
        else
            reading.stage = Reading::Stage::UnderWayAndOutdated;
    }
}

bool MirrorReader::isComplete() const {
    return std::ranges::all_of(readings_, &Reading::wasRead);
}

void MirrorReader::beginSoon(Part part) {
    Reading& reading = readingOf(part);
    const double now = NSRunLoop::mainRunLoop().currentTime();
    const double wait =
        std::max(reading.beganSeconds + pauseSeconds, reading.heldUntilSeconds) - now;
    const bool somebodyWaits = !reading.waitingForNext.empty();
    if (wait <= 0 || somebodyWaits) return begin(part);
    reading.stage = Reading::Stage::Pausing;
    reading.pause.start(wait, [this, part] { begin(part); });
}

void MirrorReader::begin(Part part) {
    Reading& reading = readingOf(part);
    reading.pause.cancel();
    reading.stage = Reading::Stage::UnderWay;
    reading.beganSeconds = NSRunLoop::mainRunLoop().currentTime();
    reading.heldUntilSeconds = 0;
    reading.waitingForThis = std::exchange(reading.waitingForNext, {});
    ask(part);
}

// A part that the server refuses to describe is empty.
template <class Taken>
auto MirrorReader::taking(Part part, Taken ServerMirror::*place) {
    return [this, part, place](auto read) {
        if constexpr (std::is_same_v<Taken, decltype(read)>)
            mirror_.*place = std::move(read);
        else
            mirror_.*place = std::move(read).value_or(Taken{});
        finish(part);
    };
}

void MirrorReader::ask(Part part) {
    switch (part) {
        case Part::Server:
            return readServer(context_, taking(part, &ServerMirror::server));
        case Part::Sinks:
            return readSinks(context_, taking(part, &ServerMirror::sinks));
        case Part::Sources:
            return readSources(context_, taking(part, &ServerMirror::sources));
        case Part::Clients:
            return readClients(context_, taking(part, &ServerMirror::clients));
        case Part::SinkInputs:
            return readSinkInputs(context_, taking(part, &ServerMirror::sinkInputs));
        case Part::SourceOutputs:
            return readSourceOutputs(context_, taking(part, &ServerMirror::sourceOutputs));
        case Part::RestoreEntries:
            return readRestoreEntries(context_, taking(part, &ServerMirror::restoreEntries));
    }
}

void MirrorReader::finish(Part part) {
    Reading& reading = readingOf(part);
    const bool outdated = reading.stage == Reading::Stage::UnderWayAndOutdated;
    reading.stage = Reading::Stage::Idle;
    reading.wasRead = true;
    const Waiting waited = std::exchange(reading.waitingForThis, {});
    if (outdated) beginSoon(part);
    if (part != Part::Clients && isComplete() && mirror_.lacksClients()) refresh(Part::Clients);
    changed_(part);
    for (const auto& afterwards : waited)
        afterwards();
}

void RolePoller::lookedAt() {
    if (mirror_.server.announcesRestoreEntries() || timer_.isRunning()) return;
    const double age = NSRunLoop::mainRunLoop().currentTime() - polledSeconds_;
    if (age >= intervalSeconds) poll();
    if (attention_ == Attention::Resting) return;
    timer_.start(intervalSeconds, [this] { tick(); });
}

void RolePoller::setAttention(Attention attention) {
    if (std::exchange(attention_, attention) == attention) return;
    if (attention == Attention::Resting)
        timer_.cancel();
    else
        lookedAt();
}

void RolePoller::tick() {
    const bool isObserved = NSNotificationCenter::defaultCenter().isObserved(
        AVSystemController_EffectiveVolumeDidChangeNotification);
    if (!isObserved) return;
    poll();
    timer_.start(intervalSeconds, [this] { tick(); });
}

void RolePoller::poll() {
    polledSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    poll_();
}

}  // namespace pulse
