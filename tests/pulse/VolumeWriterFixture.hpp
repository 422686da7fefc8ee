#pragma once

#include "backends/pulse/writes/VolumeWriter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <deque>
#include <utility>
#include <vector>

namespace test {

using namespace pulse;

using Repeat = VolumeWriter::Repeat;
using Apply = WritableServer::Apply;

inline const VolumeObject speaker{VolumeObject::Kind::Sink, "spk"};
inline const VolumeObject event{VolumeObject::Kind::Role, "event"};
inline const Setting silence{.mute = Mute::On};
inline constexpr Version anyPipeWire{1, 4, 0};

inline Setting to(float fraction) {
    return {.fraction = fraction};
}

inline pa_cvolume stereo(pa_volume_t volume) {
    return {2, {volume, volume}};
}

/// What a call asked the server for.
struct Asked {
    Target target;
    std::optional<pa_volume_t> volume{};
    std::optional<Mute> mute{};
    Apply apply = Apply::Later;
    bool operator==(const Asked&) const = default;
};

inline const Target speakerTarget{.kind = Target::Kind::Sink, .name = "spk"};
inline const Target eventEntry{.kind = Target::Kind::RestoreEntry, .name = roleEntryName("event")};

inline Asked volumeAt(float fraction) {
    return {speakerTarget, rawFromFraction(fraction)};
}
inline Asked muted(Mute mute) {
    return {speakerTarget, std::nullopt, mute};
}

/// A server that answers and is read when the test says so.
class FakeServer : public WritableServer {
 public:
    struct Call {
        Asked asked;
        Answered answered;
    };

    void setVolume(const Target& target, const pa_cvolume& volume, Answered answered) override {
        sent({target, pa_cvolume_max(&volume)}, std::move(answered));
    }
    void setMute(const Target& target, Mute mute, Answered answered) override {
        sent({target, std::nullopt, mute}, std::move(answered));
    }
    void writeEntry(const std::string& name, const RestoreEntry& entry, Apply apply,
                    Answered answered) override {
        std::optional<pa_volume_t> volume;
        if (entry.volume.channels > 0) volume = pa_cvolume_max(&entry.volume);
        sent({{.kind = Target::Kind::RestoreEntry, .name = name}, volume, entry.mute, apply},
             std::move(answered));
    }
    void read(const std::vector<Part>& /*parts*/,
              const std::function<void()>& afterwards) override {
        reads.push_back(afterwards);
    }
    void hold(const std::vector<Part>& parts) override { held.push_back(parts); }
    void wake(const std::string& sink, std::function<void()> ended) override {
        woken.push_back(sink);
        wakeEnded = std::move(ended);
    }

    std::vector<Asked> asked() const {
        std::vector<Asked> all;
        for (const Call& call : calls)
            all.push_back(call.asked);
        return all;
    }

    std::deque<Call> calls;
    std::deque<std::function<void()>> reads;
    std::vector<std::vector<Part>> held;
    std::vector<std::string> woken;
    std::function<void()> wakeEnded;
    bool answersAtOnce = false;

 private:
    void sent(const Asked& what, Answered answered) {
        calls.push_back({what, answered});
        if (answersAtOnce) answered(PA_OK);
    }
};

/// In virtual time, with a speaker at a volume that the test moves.
class VolumeWriterTest : public testing::Test {
 protected:
    VolumeWriterTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
        mirror.sinks["spk"].name = "spk";
        mirrorHas(100);
        writer.begin(server);
    }
    ~VolumeWriterTest() override {
        writer.end();
        NSRunLoop::mainRunLoop().setClock({});
    }

    void mirrorHas(pa_volume_t volume) { mirror.sinks["spk"].volume = stereo(volume); }
    void entryHas(pa_volume_t volume) {
        mirror.restoreEntries.emplace();
        (*mirror.restoreEntries)[eventEntry.name].volume = stereo(volume);
    }
    void answer(std::size_t call, int error = PA_OK) { server.calls.at(call).answered(error); }
    void answerRead() {
        ASSERT_FALSE(server.reads.empty());
        const auto afterwards = server.reads.front();
        server.reads.pop_front();
        afterwards();
    }
    void advance(double seconds) {
        now += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }
    std::size_t sentSoFar() const { return server.calls.size(); }

    double now = 1;
    ServerMirror mirror;
    FakeServer server;
    int confirmations = 0;
    std::vector<std::string> refusals;
    VolumeWriter writer{mirror,
                        {[this] { ++confirmations; },
                         [this](const VolumeObject& object, const std::string& reason) {
                             refusals.push_back(object.name + ": " + reason);
                         }}};
};

}  // namespace test
