#include "backends/pulse/VolumeWriter.hpp"

#include "backends/pulse/ServerWrites.hpp"
#include "backends/pulse/StreamGroups.hpp"

#include <pulse/error.h>

#include <algorithm>
#include <utility>

namespace pulse {
namespace {

std::vector<Part> partsOf(const VolumeObject& object) {
    switch (object.kind) {
        case VolumeObject::Kind::Sink:
            return {Part::Sinks};
        case VolumeObject::Kind::Source:
            return {Part::Sources};
        case VolumeObject::Kind::Role:
        case VolumeObject::Kind::Application:
            return {Part::RoleEntries, Part::Streams};
        default:
            return {Part::Streams};
    }
}

}  // namespace

using ToStreams = TargetWrite::ToStreams;

VolumeWriter::VolumeWriter(const ServerMirror& mirror, Handlers handlers)
    : mirror_(mirror),
      handlers_(std::move(handlers)),
      arrivals_(mirror),
      writes_([this](const auto& object, const Setting& wanted,
                     std::uint64_t ticket) { send(object, wanted, ticket); },
              [this](const auto& object, std::uint64_t ticket) { confirm(object, ticket); }) {}

void VolumeWriter::begin(PulseContext& context, MirrorReader& reader) {
    context_ = &context;
    reader_ = &reader;
}

void VolumeWriter::end() {
    context_ = nullptr;
    reader_ = nullptr;
    writes_.clear();
    balances_.clear();
    arrivals_.clear();
    waker_.clear();
    mutesOnTheirWay_.clear();
    refused_.clear();
    toldRefusals_.clear();
}

void VolumeWriter::set(const VolumeObject& object, const Setting& setting,
                       WriteQueue::Repeat repeat) {
    if (!context_) return;
    if (!pending(object)) observeBalances(object);
    writes_.set(object, setting, repeat);
}

void VolumeWriter::observeBalances(const VolumeObject& object) {
    for (const Target& target : targetsOf(mirror_, object))
        if (const auto current = mirror_.volumeOf(target))
            balances_.observe(target, current->volume);
}

void VolumeWriter::send(const VolumeObject& object, const Setting& wanted, std::uint64_t ticket) {
    const bool isMuteCertain = !mutesOnTheirWay_.contains(object);
    std::vector<TargetWrite> writes;
    for (const Target& target : targetsOf(mirror_, object))
        writes.push_back(writeTo(target, wanted, isMuteCertain));
    if (std::ranges::any_of(writes, [](const auto& write) { return write.mute.has_value(); }))
        mutesOnTheirWay_.insert(object);
    arrivals_.expect(object, writes);
    if (mirror_.server.pipeWire) reader_->hold(partsOf(object));
    writeTargets(*context_, writes,
                 [this, object, ticket](int error) { acknowledged(object, ticket, error); });
}

// In a drag the object is not unmuted at each step anew.
TargetWrite VolumeWriter::writeTo(const Target& target, const Setting& wanted, bool isMuteCertain) {
    const auto current = mirror_.volumeOf(target).value_or(ObjectVolume{});
    TargetWrite write{.target = target};
    if (wanted.fraction) {
        if (!balances_.knows(target)) balances_.observe(target, current.volume);
        write.volume = balances_.volumeAt(target, rawFromFraction(*wanted.fraction));
    }
    if (target.kind == Target::Kind::RoleEntry) {
        if (!write.volume) write.volume = current.volume;
        write.mute = wanted.mute.value_or(current.mute);
        write.rememberedDevice = mirror_.rememberedDevice(target.name);
        // PipeWire has no such way, and would keep what is sent on it.
        const auto others = mirror_.server.pipeWire ? ToStreams::Nothing : ToStreams::MuteAlone;
        write.toStreams = wanted.fraction ? ToStreams::Everything : others;
    } else if (!wanted.fraction || !isMuteCertain || wanted.mute != current.mute) {
        write.mute = wanted.mute;
    }
    return write;
}

void VolumeWriter::noteAnswer(const VolumeObject& object, int error) {
    refused_.erase(object);
    if (error == PA_OK) return;
    refused_.insert(object);
    tellRefusal(object, pa_strerror(error));
}

// What the object has already is granted to anybody, and may come in the middle of a drag: that
// ends no refusal.
void VolumeWriter::tellRefusal(const VolumeObject& object, const std::string& reason) {
    if (toldRefusals_.emplace(object, reason).second) handlers_.refused(object, reason);
}

void VolumeWriter::acknowledged(const VolumeObject& object, std::uint64_t ticket, int error) {
    noteAnswer(object, error);
    const bool showsAtOnce = !mirror_.server.pipeWire || error != PA_OK;
    if (showsAtOnce) return writes_.acknowledged(object, ticket);
    await(object, Arrivals::Until::Taken, [this, object, ticket](Arrivals::Outcome outcome) {
        if (outcome == Arrivals::Outcome::Unheeded)
            sendAgain(object, ticket);
        else
            writes_.acknowledged(object, ticket);
    });
}

// One that wakes shows what it was given before, which may be another's: so it is read first.
void VolumeWriter::sendAgain(const VolumeObject& object, std::uint64_t ticket) {
    if (!mayNeverHaveRun(object)) return writes_.unheeded(object, ticket);
    waker_.wake(context_->handle(), object.name, [this, object, ticket] {
        reader_->refresh(partsOf(object),
                         [this, object, ticket] { writes_.unheeded(object, ticket); });
    });
}

// A card's sink reports by the card, whether it runs or not.
bool VolumeWriter::mayNeverHaveRun(const VolumeObject& object) const {
    if (object.kind != VolumeObject::Kind::Sink) return false;
    const Device* sink = mirror_.sinkNamed(object.name);
    return sink && sink->isSuspended && !sink->isOfCard;
}

// On PipeWire the object has been read already, and one read more is a long one where there are
// hundreds of streams.
void VolumeWriter::confirm(const VolumeObject& object, std::uint64_t ticket) {
    const auto finishIt = [this, object, ticket] { finish(object, ticket); };
    const bool isRefused = refused_.contains(object);
    if (!mirror_.server.pipeWire || isRefused) return reader_->refresh(partsOf(object), finishIt);
    if (arrivals_.areExact(object)) return finishIt();
    await(object, Arrivals::Until::Kept, [this, object, finishIt](Arrivals::Outcome outcome) {
        // It said yes, to a client without rights too.
        const bool isLost = outcome == Arrivals::Outcome::Unheeded;
        if (isLost && streamsOf(mirror_, object).empty())
            tellRefusal(object, "the server has not kept it");
        finishIt();
    });
}

void VolumeWriter::await(const VolumeObject& object, Arrivals::Until until,
                         const Arrivals::Ended& ended) {
    const auto read = [this, object](const std::function<void()>& afterwards) {
        reader_->refresh(partsOf(object), afterwards);
    };
    arrivals_.await(object, until, read, ended);
}

void VolumeWriter::finish(const VolumeObject& object, std::uint64_t ticket) {
    writes_.confirmed(object, ticket);
    if (!pending(object)) mutesOnTheirWay_.erase(object);
    handlers_.confirmed();
}

}  // namespace pulse
