#include "backends/pulse/writes/VolumeWriter.hpp"

#include "backends/pulse/categories/StreamGroups.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <pulse/error.h>

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
            return {Part::RestoreEntries, Part::SinkInputs};
        default:
            return {Part::SinkInputs};
    }
}

double now() {
    return NSRunLoop::mainRunLoop().currentTime();
}

}  // namespace

using Apply = WritableServer::Apply;
using Echo = PendingWrite::Echo;
using ToStreams = TargetWrite::ToStreams;
using Until = PendingWrite::Until;

VolumeWriter::VolumeWriter(const ServerMirror& mirror, Handlers handlers)
    : mirror_(mirror), handlers_(std::move(handlers)) {}

void VolumeWriter::end() {
    server_ = nullptr;
    writes_.clear();
    balances_.clear();
}

std::optional<Setting> VolumeWriter::pending(const VolumeObject& object) const {
    const auto found = writes_.find(object);
    if (found == writes_.end()) return std::nullopt;
    return found->second->wanted();
}

void VolumeWriter::set(const VolumeObject& object, const Setting& setting, Repeat repeat) {
    if (!server_) return;
    WritePtr& write = writes_[object];
    if (write && !write->isConfirming()) return write->take(setting, repeat);
    if (!write) observeBalances(object);
    write = write ? write->succeededBy(setting) : std::make_shared<PendingWrite>(object, setting);
    send(WritePtr(write));
}

void VolumeWriter::observeBalances(const VolumeObject& object) {
    for (const Target& target : targetsOf(mirror_, object))
        if (const auto current = mirror_.volumeOf(target))
            balances_.observe(target, current->volume);
}

// Do not unmute the object again at each step of a drag.
TargetWrite VolumeWriter::writeTo(const Target& target, const Setting& wanted, bool isMuteCertain) {
    const auto current = mirror_.volumeOf(target).value_or(ObjectVolume{});
    TargetWrite write{.target = target};
    if (wanted.fraction) {
        if (!balances_.knows(target)) balances_.observe(target, current.volume);
        write.volume = balances_.volumeAt(target, rawFromFraction(*wanted.fraction));
    }
    if (target.kind == Target::Kind::RestoreEntry) {
        if (!write.volume) write.volume = current.volume;
        write.mute = wanted.mute.value_or(current.mute);
        write.rememberedDevice = mirror_.rememberedDevice(target.name);
        // PipeWire has no such request and would store what is sent.
        const auto others = mirror_.server.pipeWire ? ToStreams::Nothing : ToStreams::MuteAlone;
        write.toStreams = wanted.fraction ? ToStreams::Everything : others;
    } else if (!wanted.fraction || !isMuteCertain || wanted.mute != current.mute) {
        write.mute = wanted.mute;
    }
    return write;
}

std::vector<TargetWrite> VolumeWriter::begun(PendingWrite& write) {
    const Setting& wanted = write.begin();
    std::vector<TargetWrite> writes;
    for (const Target& target : targetsOf(mirror_, write.object()))
        writes.push_back(writeTo(target, wanted, write.isMuteCertain()));
    write.expect(writes, mirror_);
    return writes;
}

// Mutes before the volume changes and unmutes after it, so that nothing is heard that was not
// requested.
void VolumeWriter::send(const WritePtr& write) {
    const std::vector<TargetWrite> writes = begun(*write);
    if (mirror_.server.pipeWire) server_->hold(partsOf(write->object()));
    const auto answer = [&] {
        write->expectAnswer();
        return ifStillPending(write, &VolumeWriter::answered);
    };
    for (const TargetWrite& each : writes) {
        if (each.target.kind == Target::Kind::RestoreEntry) {
            const RestoreEntry entry{each.volume.value_or(pa_cvolume{}), *each.mute,
                                     each.rememberedDevice};
            const Apply apply = each.toStreams == ToStreams::Everything ? Apply::Now : Apply::Later;
            // An entry without a volume sets none; the complete one follows.
            if (each.toStreams == ToStreams::MuteAlone)
                server_->writeEntry(each.target.name, {{}, entry.mute, entry.device}, Apply::Now,
                                    answer());
            server_->writeEntry(each.target.name, entry, apply, answer());
            continue;
        }
        if (each.mute == Mute::On) server_->setMute(each.target, Mute::On, answer());
        if (each.volume) server_->setVolume(each.target, *each.volume, answer());
        if (each.mute == Mute::Off) server_->setMute(each.target, Mute::Off, answer());
    }
    answered(write, PA_OK);
}

// On PipeWire an acknowledged volume has not been taken yet.
void VolumeWriter::answered(const WritePtr& write, int error) {
    if (!write->takeAnswer(error)) return;
    const int refusal = write->error();
    if (refusal != PA_OK) handlers_.refused(write->object(), pa_strerror(refusal));
    if (mirror_.server.pipeWire && refusal == PA_OK) return await(write, Until::Taken);
    proceed(write);
}

void VolumeWriter::await(const WritePtr& write, Until until) {
    write->await(until, now());
    look(write);
}

void VolumeWriter::look(const WritePtr& write) {
    server_->read(partsOf(write->object()), [goOn = ifStillPending(write, &VolumeWriter::judge),
                                             began = now()] { goOn(began); });
}

void VolumeWriter::judge(const WritePtr& write, double readSeconds) {
    const Echo echo = write->echoIn(mirror_, readSeconds);
    if (echo == Echo::Awaited)
        write->pause().start(PendingWrite::retrySeconds,
                             ifStillPending(write, &VolumeWriter::look));
    else if (write->awaited() == Until::Taken)
        taken(write, echo);
    else
        kept(write, echo);
}

void VolumeWriter::taken(const WritePtr& write, Echo echo) {
    if (echo == Echo::Arrived) return proceed(write);
    if (!mayNeverHaveRun(write->object())) return repeat(write);
    server_->wake(write->object().name, ifStillPending(write, &VolumeWriter::woken));
}

// A sink of a card reports its volume even if it has never run.
bool VolumeWriter::mayNeverHaveRun(const VolumeObject& object) const {
    if (object.kind != VolumeObject::Kind::Sink) return false;
    const Device* sink = mirror_.sinkNamed(object.name);
    return sink && sink->isSuspended && !sink->isOfCard;
}

// A woken sink shows what was set before, maybe by another program: read it first.
void VolumeWriter::woken(const WritePtr& write) {
    server_->read(partsOf(write->object()), ifStillPending(write, &VolumeWriter::repeat));
}

void VolumeWriter::repeat(const WritePtr& write) {
    if (write->mayRepeatUnheeded())
        send(write);
    else
        proceed(write);
}

void VolumeWriter::proceed(const WritePtr& write) {
    if (write->hasNext())
        send(write);
    else
        confirm(write);
}

// On PipeWire the object has already been read, and another read takes long if there are hundreds
// of streams.
void VolumeWriter::confirm(const WritePtr& write) {
    if (!mirror_.server.pipeWire || write->error() != PA_OK)
        return server_->read(partsOf(write->object()),
                             ifStillPending(write, &VolumeWriter::finish));
    if (write->isExactIn(mirror_)) return finish(write);
    await(write, Until::Kept);
}

// The server acknowledges entries of clients without rights, too.
void VolumeWriter::kept(const WritePtr& write, Echo echo) {
    if (echo == Echo::Unheeded && streamsOf(mirror_, write->object()).empty())
        handlers_.refused(write->object(), "the server has not kept it");
    finish(write);
}

void VolumeWriter::finish(const WritePtr& write) {
    writes_.erase(write->object());
    handlers_.confirmed();
}

void BalanceMemory::observe(const Target& target, const pa_cvolume& reported) {
    Memory& memory = memories_[target];
    const bool ours = memory.written.channels > 0 && pa_cvolume_equal(&memory.written, &reported);
    if (!ours) memory.balance = reported;
}

pa_cvolume BalanceMemory::volumeAt(const Target& target, pa_volume_t loudest) {
    Memory& memory = memories_[target];
    memory.written = memory.balance;
    if (!pa_cvolume_valid(&memory.written)) pa_cvolume_set(&memory.written, 2, loudest);
    pa_cvolume_scale(&memory.written, loudest);
    return memory.written;
}

void BalanceMemory::forgetSinkInputsMissingIn(const ServerMirror& mirror) {
    std::erase_if(memories_, [&](const auto& each) {
        return each.first.kind == Target::Kind::SinkInput &&
               !mirror.sinkInputAt(each.first.sinkInputIndex);
    });
}

}  // namespace pulse
