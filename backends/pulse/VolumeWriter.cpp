#include "backends/pulse/VolumeWriter.hpp"

#include "backends/pulse/ServerWrites.hpp"
#include "backends/pulse/StreamGroups.hpp"

#include <utility>

namespace pulse {

VolumeWriter::VolumeWriter(const ServerMirror& mirror, std::function<void()> confirmed)
    : mirror_(mirror),
      confirmed_(std::move(confirmed)),
      arrivals_(mirror),
      writes_([this](const auto& object, float fraction,
                     std::uint64_t ticket) { send(object, fraction, ticket); },
              [this](const auto& object, std::uint64_t ticket) { confirmInTime(object, ticket); }) {
}

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
    stale_.clear();
}

void VolumeWriter::set(const VolumeObject& object, float fraction, WriteQueue::Repeat repeat) {
    if (!context_) return;
    if (!pending(object)) observeBalances(object);
    writes_.set(object, fraction, repeat);
}

void VolumeWriter::observeBalances(const VolumeObject& object) {
    for (const Target& target : targetsOf(mirror_, object))
        if (const auto current = mirror_.volumeOf(target))
            balances_.observe(target, current->volume);
}

void VolumeWriter::send(const VolumeObject& object, float fraction, std::uint64_t ticket) {
    std::vector<TargetWrite> writes;
    for (const Target& target : targetsOf(mirror_, object)) {
        const auto current = mirror_.volumeOf(target).value_or(ObjectVolume{});
        if (!balances_.knows(target)) balances_.observe(target, current.volume);
        writes.push_back({target, balances_.volumeAt(target, rawFromFraction(fraction)),
                          current.mute, mirror_.rememberedDevice(target.name)});
    }
    arrivals_.expect(object, writes);
    writeVolumes(*context_, writes, [this, object, ticket] { acknowledged(object, ticket); });
}

void VolumeWriter::acknowledged(const VolumeObject& object, std::uint64_t ticket) {
    if (!mirror_.server.pipeWire) return writes_.acknowledged(object, ticket);
    arrivals_.await(
        object,
        [this, object](const std::function<void()>& afterwards) { read(object, afterwards); },
        [this, object, ticket](Arrivals::Outcome outcome) {
            if (outcome == Arrivals::Outcome::Unheeded)
                writes_.unheeded(object, ticket);
            else
                writes_.acknowledged(object, ticket);
        });
}

void VolumeWriter::confirmInTime(const VolumeObject& object, std::uint64_t ticket) {
    const bool isStale = object.kind == VolumeObject::Kind::Role && mirror_.server.pipeWire;
    if (!isStale) return confirm(object, ticket);
    stale_[object].start(staleRoleSeconds, [this, object, ticket] { confirm(object, ticket); });
}

void VolumeWriter::confirm(const VolumeObject& object, std::uint64_t ticket) {
    read(object, [this, object, ticket] { finish(object, ticket); });
}

void VolumeWriter::read(const VolumeObject& object, const std::function<void()>& afterwards) {
    switch (object.kind) {
        case VolumeObject::Kind::Sink:
            return reader_->refresh({Part::Sinks}, afterwards);
        case VolumeObject::Kind::Source:
            return reader_->refresh({Part::Sources}, afterwards);
        case VolumeObject::Kind::Role:
            return reader_->refresh({Part::RoleEntries, Part::Streams}, afterwards);
        default:
            return reader_->refresh({Part::Streams}, afterwards);
    }
}

void VolumeWriter::finish(const VolumeObject& object, std::uint64_t ticket) {
    writes_.confirmed(object, ticket);
    confirmed_();
}

}  // namespace pulse
