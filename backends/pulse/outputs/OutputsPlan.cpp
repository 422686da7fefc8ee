#include "backends/pulse/outputs/OutputsPlan.hpp"

#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/categories/Routes.hpp"
#include "backends/pulse/categories/StreamGroups.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace pulse {
namespace {

using Choice = OutputsJournal::Choice;
using Phase = OutputsJournal::Phase;

constexpr const char* keptReal = "real";

// Servers round volumes.
constexpr pa_volume_t roundedBy = 2;

bool isNear(const pa_cvolume& one, const pa_cvolume& other) {
    if (one.channels != other.channels) return false;
    for (unsigned i = 0; i < one.channels; ++i)
        if (std::max(one.values[i], other.values[i]) - std::min(one.values[i], other.values[i]) >
            roundedBy)
            return false;
    return true;
}

bool isLouder(const pa_cvolume& one, const pa_cvolume& other) {
    return pa_cvolume_max(&one) > pa_cvolume_max(&other) + roundedBy;
}

pa_cvolume evenVolume(unsigned channels, pa_volume_t raw) {
    pa_cvolume volume{};
    pa_cvolume_set(&volume, channels, raw);
    return volume;
}

/// The same volume for that many channels.
pa_cvolume fitted(const pa_cvolume& volume, unsigned channels) {
    return volume.channels == channels ? volume : evenVolume(channels, pa_cvolume_max(&volume));
}

Target sinkTarget(const std::string& name) {
    return {.kind = Target::Kind::Sink, .name = name};
}

ObjectVolume levelOf(const Device& device) {
    return {device.volume, device.mute};
}

bool isReal(const Device* device) {
    return device && !isVirtual(*device);
}

/// One look at the server's state.
class Planner {
 public:
    Planner(const ServerMirror& mirror, const OutputsJournal& journal, const OutputsMemory& memory)
        : mirror_(mirror), journal_(journal), memory_(memory), media_(mediaSink.name()) {}

    OutputSteps next() {
        const bool isForeign = hasForeignRoleSinks(mirror_);
        if (journal_.phase == Phase::GoingDown)
            goDown();
        else if (journal_.choice == Choice::Shared && journal_.phase != Phase::Down)
            beginToGoDown();
        else if (journal_.choice == Choice::Apart && !isForeign)
            keepApart();
        return std::move(steps_);
    }

 private:
    void keepApart() {
        switch (journal_.phase) {
            case Phase::Down:
                return beginToGoUp();
            case Phase::GoingUp:
            case Phase::Returning:
                return goUp();
            case Phase::Up:
                return stayUp();
            case Phase::Turning:
                return turn();
            case Phase::GoingDown:
                return;
        }
    }

    /// Leaves out what had no effect.
    void add(OutputStep step) {
        if (!memory_.givenUp.contains(describe(step))) steps_.push_back(std::move(step));
    }
    bool hasSteps() const { return !steps_.empty(); }
    OutputsJournal journalIn(Phase phase) const {
        OutputsJournal journal = journal_;
        journal.phase = phase;
        return journal;
    }

    bool isMissingAny() const {
        return std::ranges::any_of(roleSinks,
                                   [&](const RoleSink& sink) { return !deviceOf(sink, mirror_); });
    }
    /// The sink that the user hears, or would hear without the outputs.
    const Device* chosenReal() const {
        const Device* standard = mirror_.defaultSink();
        if (isReal(standard)) return standard;
        const Device* media = deviceOf(mediaSink, mirror_);
        if (media) return realSinkBehind(mirror_, media);
        const Device* before = mirror_.sinkNamed(journal_.real);
        if (isReal(before)) return before;
        return realSinkBehind(mirror_, standard);
    }
    std::optional<ObjectVolume> entryOf(const RoleSink& sink) const {
        if (sink.entryRole.empty()) return std::nullopt;
        return mirror_.volumeOf({.kind = Target::Kind::RestoreEntry,
                                 .name = roleEntryName(std::string(sink.entryRole))});
    }
    std::vector<const SinkInput*> streamsOfEntry(const RoleSink& sink) const {
        return streamsOf(mirror_, {VolumeObject::Kind::Role, std::string(sink.entryRole)});
    }
    const ObjectVolume* keptOf(std::string_view role) const {
        const auto found = journal_.kept.find(std::string(role));
        return found == journal_.kept.end() ? nullptr : &found->second;
    }
    bool isDefaultMedia() const { return mirror_.server.defaultSinkName == media_; }

    // Going up --------------------------------------------------------------------------------

    /// The outputs get what their roles have, so that nothing changes but the place of the volume.
    void beginToGoUp() {
        const Device* real = chosenReal();
        if (!real) return;
        if (!mirror_.server.pipeWire && !memory_.isRouting) add(step::AskForRouting{});
        if (hasSteps()) return;
        OutputsJournal journal = journalIn(isMissingAny() ? Phase::GoingUp : Phase::Up);
        journal.real = real->name;
        journal.kept.clear();
        if (journal.phase == Phase::GoingUp)
            for (const RoleSink& sink : roleSinks) {
                ObjectVolume level = entryOf(sink).value_or(ObjectVolume{});
                const pa_volume_t raw =
                    level.volume.channels > 0 ? pa_cvolume_max(&level.volume) : PA_VOLUME_NORM;
                level.volume = evenVolume(2, std::min(raw, pa_volume_t{PA_VOLUME_NORM}));
                journal.kept[std::string(sink.role)] = level;
            }
        add(step::Remember{journal});
    }

    void goUp() {
        const Device* real = chosenReal();
        if (!real) return;
        load(*real);
        if (hasSteps()) return;
        wake();
        if (hasSteps()) return;
        setKeptVolumes();
        if (journal_.phase == Phase::GoingUp) {
            if (hasSteps()) return;
            gatherStreams();
            if (hasSteps()) return;
            raiseStreams();
        }
        // PulseAudio does everything in the order of the requests.
        if (hasSteps() && mirror_.server.pipeWire) return;
        if (!isDefaultMedia()) add(step::SetDefault{media_});
        if (hasSteps()) return;
        settle();
        if (hasSteps()) return;
        movePlaybacks(mirror_.sinkNamed(journal_.real));
        if (hasSteps()) return;
        OutputsJournal journal = journalIn(Phase::Up);
        journal.kept.clear();
        add(step::Remember{journal});
    }

    void load(const Device& real) {
        for (const RoleSink& sink : roleSinks)
            if (!deviceOf(sink, mirror_)) add(step::Load{&sink, real.name});
    }

    void wake() {
        if (!mirror_.server.pipeWire) return;
        for (const RoleSink& sink : roleSinks)
            if (const Device* device = deviceOf(sink, mirror_))
                if (!memory_.awake.contains(device->index)) add(step::Wake{device->name});
    }

    void setKeptVolumes() {
        for (const RoleSink& sink : roleSinks) {
            const Device* device = deviceOf(sink, mirror_);
            const ObjectVolume* kept = keptOf(sink.role);
            if (!device || !kept) continue;
            const pa_cvolume wanted = fitted(kept->volume, device->volume.channels);
            if (!isNear(wanted, device->volume))
                add(step::SetVolume{sinkTarget(device->name), wanted});
            if (kept->mute != device->mute)
                add(step::SetMute{sinkTarget(device->name), kept->mute});
        }
    }

    void settle() {
        if (mirror_.server.pipeWire && !memory_.isSettled) add(step::Settle{});
    }

    /// Only those that are elsewhere: PipeWire's session manager leaves a moved stream where it is,
    /// and sends the others to a better output when one comes.
    void movePlaybacks(const Device* real) {
        if (!isReal(real)) return;
        for (const SinkInput* playback : playbacks())
            if (mirror_.sinkOf(*playback) && playback->sinkIndex != real->index)
                add(step::Move{playback->index, real->name});
    }

    std::vector<const SinkInput*> playbacks() const {
        std::vector<const SinkInput*> all;
        for (const RoleSink& sink : roleSinks)
            if (const Device* device = deviceOf(sink, mirror_))
                if (const SinkInput* playback = playbackOf(mirror_, *device))
                    all.push_back(playback);
        return all;
    }

    /// A stream of a role is raised only at the output that lowers it.
    void gatherStreams() {
        for (const StrayStream& stray : strayStreams(mirror_))
            if (isRaised(*stray.belongsTo))
                add(step::Move{stray.stream->index, stray.belongsTo->name()});
    }

    bool isRaised(const RoleSink& sink) const {
        const ObjectVolume* kept = keptOf(sink.role);
        const auto entry = entryOf(sink);
        if (!kept || !entry) return false;
        return pa_cvolume_max(&kept->volume) < PA_VOLUME_NORM || kept->mute == Mute::On;
    }

    void raiseStreams() {
        for (const RoleSink& sink : roleSinks) {
            if (!isRaised(sink)) continue;
            const auto entry = entryOf(sink);
            const pa_cvolume full = evenVolume(2, PA_VOLUME_NORM);
            if (!isNear(entry->volume, full) || entry->mute == Mute::On)
                add(writeEntry(sink, {full, Mute::Off}));
            const Device* device = deviceOf(sink, mirror_);
            for (const SinkInput* stream : streamsOfEntry(sink)) {
                if (stream->sinkIndex != device->index) continue;
                setStream(*stream,
                          {evenVolume(stream->volume.channels, PA_VOLUME_NORM), Mute::Off});
            }
        }
    }

    OutputStep writeEntry(const RoleSink& sink, const ObjectVolume& level) const {
        const std::string role(sink.entryRole);
        return step::WriteEntry{
            role, {level.volume, level.mute, mirror_.rememberedDevice(roleEntryName(role))}};
    }

    void setStream(const SinkInput& stream, const ObjectVolume& level) {
        const Target target{.kind = Target::Kind::SinkInput, .sinkInputIndex = stream.index};
        if (level.mute == Mute::On && stream.mute == Mute::Off)
            add(step::SetMute{target, Mute::On});
        if (!isNear(level.volume, stream.volume)) add(step::SetVolume{target, level.volume});
        if (level.mute == Mute::Off && stream.mute == Mute::On)
            add(step::SetMute{target, Mute::Off});
    }

    // Being up --------------------------------------------------------------------------------

    void stayUp() {
        const Device* real = chosenReal();
        if (!real) return;
        if (isMissingAny()) return beginToReturn(*real);
        wake();
        if (hasSteps()) return;
        separatePlaybacks();
        if (hasSteps()) return;
        if (const Device* picked = pickedReal()) {
            OutputsJournal journal = journalIn(Phase::Turning);
            journal.real = picked->name;
            add(step::Remember{journal});
        }
    }

    /// Some mixers move every stream to a new default sink, and so the other roles into media.
    void separatePlaybacks() {
        const Device* before = mirror_.sinkNamed(journal_.real);
        const Device* real = isReal(before) ? before : chosenReal();
        for (const SinkInput* playback : playbacks()) {
            const Device* sink = mirror_.sinkOf(*playback);
            if (sink && sink->isOurOutput && isReal(real))
                add(step::Move{playback->index, real->name});
        }
    }

    void beginToReturn(const Device& real) {
        OutputsJournal journal = journalIn(Phase::Returning);
        journal.real = real.name;
        journal.kept = memory_.levels;
        add(step::Remember{journal});
    }

    /// The real output that the user chose, or has just connected. PipeWire's session manager sends
    /// the roles to a new one by itself.
    const Device* pickedReal() const {
        if (isReal(mirror_.defaultSink())) return mirror_.defaultSink();
        if (mirror_.server.pipeWire || memory_.realSinks.empty()) return nullptr;
        for (const auto& [name, device] : mirror_.sinks) {
            const bool isPlugged = isBluetooth(device) || device.bus == "usb";
            if (isPlugged && isReal(&device) && !memory_.realSinks.contains(name)) return &device;
        }
        return nullptr;
    }

    // PipeWire takes a move to the default sink for the wish to follow it, so there the default
    // must be media again before. At that moment the streams are still where the user wants them,
    // and would be sent away again unless they are moved there.
    void turn() {
        const Device* real = mirror_.sinkNamed(journal_.real);
        if (isMissingAny() || !isReal(real)) {
            add(step::Remember{journalIn(Phase::Up)});
            return;
        }
        if (!mirror_.server.pipeWire) movePlaybacks(real);
        if (!isDefaultMedia()) add(step::SetDefault{media_});
        if (hasSteps()) return;
        if (mirror_.server.pipeWire)
            for (const SinkInput* playback : playbacks())
                if (!isMovedTo(*playback, *real)) add(step::Move{playback->index, real->name});
        if (hasSteps()) return;
        settle();
        if (hasSteps()) return;
        movePlaybacks(real);
        if (hasSteps()) return;
        add(step::Remember{journalIn(Phase::Up)});
    }

    bool isMovedTo(const SinkInput& stream, const Device& sink) const {
        const auto found = memory_.moved.find(stream.index);
        return found != memory_.moved.end() && found->second == sink.index;
    }

    // Going down ------------------------------------------------------------------------------

    /// The real output takes media's volume over, and each role gets the rest of its own.
    void beginToGoDown() {
        OutputsJournal journal = journalIn(Phase::GoingDown);
        const Device* media = deviceOf(mediaSink, mirror_);
        const Device* real = chosenReal();
        journal.real = real ? real->name : "";
        if (journal_.phase != Phase::GoingUp) {
            journal.kept.clear();
            if (media && real) keepForDown(journal, *media, *real);
        }
        add(step::Remember{journal});
    }

    void keepForDown(OutputsJournal& journal, const Device& media, const Device& real) const {
        const double mediaFraction =
            std::min(1.0, static_cast<double>(pa_cvolume_max(&media.volume)) / PA_VOLUME_NORM);
        for (const RoleSink& sink : roleSinks) {
            const Device* device = deviceOf(sink, mirror_);
            const auto entry = entryOf(sink);
            if (!device || !entry) continue;
            const double role =
                static_cast<double>(pa_cvolume_max(&device->volume)) / PA_VOLUME_NORM;
            const double left = mediaFraction > 0 ? std::min(1.0, role / mediaFraction) : 0;
            const auto raw = static_cast<pa_volume_t>(
                std::lround(left * static_cast<double>(pa_cvolume_max(&entry->volume))));
            const bool isMuted = device->mute == Mute::On || entry->mute == Mute::On;
            journal.kept[std::string(sink.role)] = {evenVolume(2, raw),
                                                    isMuted ? Mute::On : Mute::Off};
        }
        ObjectVolume left = levelOf(real);
        const pa_cvolume factor = fitted(media.volume, real.volume.channels);
        for (unsigned i = 0; i < left.volume.channels; ++i)
            left.volume.values[i] = pa_sw_volume_multiply(
                left.volume.values[i], std::min(factor.values[i], pa_volume_t{PA_VOLUME_NORM}));
        if (media.mute == Mute::On) left.mute = Mute::On;
        journal.kept[keptReal] = left;
    }

    void goDown() {
        lowerStreams();
        lowerOutputs();
        if (hasSteps()) return;
        const Device* real = mirror_.sinkNamed(journal_.real);
        if (isReal(real)) {
            lowerReal(*real);
            if (hasSteps()) return;
            const Device* standard = mirror_.defaultSink();
            if (standard && standard->isOurOutput) add(step::SetDefault{real->name});
            if (hasSteps()) return;
        }
        unload();
        if (hasSteps()) return;
        OutputsJournal journal = journalIn(Phase::Down);
        journal.kept.clear();
        add(step::Remember{journal});
    }

    void lowerStreams() {
        for (const RoleSink& sink : roleSinks) {
            const ObjectVolume* kept = keptOf(sink.role);
            const auto entry = entryOf(sink);
            if (!kept || !entry) continue;
            const bool isToBeMuted = kept->mute == Mute::On && entry->mute == Mute::Off;
            if (isLouder(entry->volume, kept->volume) || isToBeMuted) add(writeEntry(sink, *kept));
            for (const SinkInput* stream : streamsOfEntry(sink)) {
                ObjectVolume lower{stream->volume, stream->mute};
                if (isLouder(lower.volume, kept->volume))
                    pa_cvolume_scale(&lower.volume, pa_cvolume_max(&kept->volume));
                if (kept->mute == Mute::On) lower.mute = Mute::On;
                setStream(*stream, lower);
            }
        }
    }

    /// The server restores an output's last volume before anybody can lower it.
    void lowerOutputs() {
        for (const RoleSink& sink : roleSinks) {
            const Device* device = deviceOf(sink, mirror_);
            if (!device) continue;
            const pa_cvolume full = evenVolume(device->volume.channels, PA_VOLUME_NORM);
            if (isLouder(device->volume, full))
                add(step::SetVolume{sinkTarget(device->name), full});
        }
    }

    void lowerReal(const Device& real) {
        const ObjectVolume* kept = keptOf(keptReal);
        if (!kept) return;
        if (kept->mute == Mute::On && real.mute == Mute::Off)
            add(step::SetMute{sinkTarget(real.name), Mute::On});
        const pa_cvolume wanted = fitted(kept->volume, real.volume.channels);
        if (isLouder(real.volume, wanted)) add(step::SetVolume{sinkTarget(real.name), wanted});
    }

    /// Outputs that PipeWire itself makes, by a file of its configuration, stay until the next
    /// log-in: they let everything through.
    void unload() {
        for (const RoleSink& sink : roleSinks) {
            const Device* device = deviceOf(sink, mirror_);
            if (!device) continue;
            if (device->ownerModule != PA_INVALID_INDEX) {
                add(step::Unload{device->ownerModule});
                continue;
            }
            const pa_cvolume full = evenVolume(device->volume.channels, PA_VOLUME_NORM);
            if (!isNear(device->volume, full)) add(step::SetVolume{sinkTarget(device->name), full});
            if (device->mute == Mute::On) add(step::SetMute{sinkTarget(device->name), Mute::Off});
        }
    }

    const ServerMirror& mirror_;
    const OutputsJournal& journal_;
    const OutputsMemory& memory_;
    const std::string media_;
    OutputSteps steps_;
};

}  // namespace

OutputSteps nextSteps(const ServerMirror& mirror, const OutputsJournal& journal,
                      const OutputsMemory& memory) {
    return Planner(mirror, journal, memory).next();
}

std::set<std::string> realSinksOf(const ServerMirror& mirror) {
    std::set<std::string> names;
    for (const auto& [name, device] : mirror.sinks)
        if (isReal(&device)) names.insert(name);
    return names;
}

void observe(OutputsMemory& memory, const ServerMirror& mirror, const OutputsJournal& journal) {
    memory.realSinks = realSinksOf(mirror);
    if (journal.phase != Phase::Up) return;
    for (const RoleSink& sink : roleSinks)
        if (const Device* device = deviceOf(sink, mirror))
            if (!mirror.server.pipeWire || memory.awake.contains(device->index))
                memory.levels[std::string(sink.role)] = levelOf(*device);
}

}  // namespace pulse
