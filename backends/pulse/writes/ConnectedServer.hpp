#pragma once

#include "backends/pulse/connection/PulseContext.hpp"
#include "backends/pulse/mirror/MirrorReader.hpp"
#include "backends/pulse/writes/VolumeWriter.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <pulse/context.h>
#include <pulse/stream.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace pulse {

/// Makes a suspended sink run for a moment, inaudibly, by recording its monitor. From PipeWire 1.4
/// on, a sink without a card that has never run accepts volumes and mutes but keeps reporting 100 %
/// and unmuted, until something plays on it or records its monitor for the first time. From then on
/// its reports are right, even while it is suspended. Waking takes some tens of milliseconds.
class SinkWaker {
 public:
    /// The longest wait, in seconds, for a sink that cannot be woken: the client lacks the rights,
    /// or the sink is gone.
    static constexpr double longestSeconds = 0.5;

    /// Records the sink's monitor until its first sample arrives, then calls `ended` once, even on
    /// failure and never from inside. Cancels an earlier wake of the same sink. `context` must
    /// outlive the wake, or clear() be called before.
    void wake(pa_context* context, const std::string& sink, std::function<void()> ended);
    /// Cancels all wakes; no callback follows.
    void clear() { wakes_.clear(); }

 private:
    struct StreamDeleter {
        void operator()(pa_stream* stream) const;
    };
    /// The user data of its stream's callbacks.
    struct Wake {
        std::function<void()> finish;
        OneShotTimer end;
        std::unique_ptr<pa_stream, StreamDeleter> stream;
    };

    static void record(Wake& wake, pa_context* context, const std::string& monitor);

    std::map<std::string, Wake> wakes_;  // By the sink's name.
};

/// The WritableServer of a connection: the library calls that set volumes, and the reads that show
/// their effect.
class ConnectedServer final : public WritableServer {
 public:
    /// Both outlive this.
    ConnectedServer(PulseContext& context, MirrorReader& reader)
        : context_(context), reader_(reader) {}

    void setVolume(const Target& target, const pa_cvolume& volume, Answered answered) override;
    void setMute(const Target& target, Mute mute, Answered answered) override;
    void writeEntry(const std::string& name, const RestoreEntry& entry, Apply apply,
                    Answered answered) override;
    void read(const std::vector<Part>& parts, const std::function<void()>& afterwards) override {
        reader_.refresh(parts, afterwards);
    }
    void hold(const std::vector<Part>& parts) override { reader_.hold(parts); }
    void wake(const std::string& sink, std::function<void()> ended) override {
        waker_.wake(context_.handle(), sink, std::move(ended));
    }

    // The server's arrangement: `answered` as above. -----------------------------------------

    void loadModule(const std::string& module, const std::string& arguments, Answered answered);
    /// Whether a module of that name is loaded; false if the server does not tell.
    void askForModule(const std::string& module, std::function<void(bool isLoaded)> answered);
    void unloadModule(std::uint32_t index, Answered answered);
    void setDefaultSink(const std::string& sink, Answered answered);
    void moveSinkInput(std::uint32_t index, const std::string& sink, Answered answered);
    /// Whether it runs on this machine.
    bool isLocal() const { return pa_context_is_local(context_.handle()) > 0; }

 private:
    PulseContext& context_;
    MirrorReader& reader_;
    SinkWaker waker_;
};

}  // namespace pulse
