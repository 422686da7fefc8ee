#pragma once

#include "backends/pulse/connection/PulseContext.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "backends/pulse/writes/PendingWrite.hpp"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// The part of a connected server that a VolumeWriter needs. ConnectedServer is the one in
/// production; tests have their own.
///
/// Each call sends a request and returns. Callbacks come later from the main loop, and not after
/// the connection has ended. Main thread.
class WritableServer {
 public:
    /// Called with PA_OK, or with the library's code for the reason of the refusal. A stream that
    /// has ended meanwhile counts as written.
    using Answered = std::function<void(int error)>;
    /// Whether playing streams of a role take over at once what is stored for the role.
    enum class Apply { Later, Now };

    virtual ~WritableServer() = default;

    /// For a sink, a source or a stream.
    virtual void setVolume(const Target& target, const pa_cvolume& volume, Answered answered) = 0;
    virtual void setMute(const Target& target, Mute mute, Answered answered) = 0;
    /// Replaces an entry as a whole. One without channels stores no volume and sets none.
    virtual void writeEntry(const std::string& name, const RestoreEntry& entry, Apply apply,
                            Answered answered) = 0;

    /// Reads the parts into the mirror; `afterwards` is called when reads that started after this
    /// call have finished.
    virtual void read(const std::vector<Part>& parts, const std::function<void()>& afterwards) = 0;
    /// Announces that such a read will follow a number of writes, so the changes in between need no
    /// reads of their own.
    virtual void hold(const std::vector<Part>& parts) = 0;
    /// Makes a suspended sink run for a moment, inaudibly. `ended` is called even on failure.
    virtual void wake(const std::string& sink, std::function<void()> ended) = 0;
};

/// Preserves the balance between a target's channels while its volume moves. A volume near 0 has no
/// precision left for a balance, so the balance is taken from the last volume that another program
/// set, and not from our own last step.
///
///     balances.observe(target, reported);              // When a movement starts.
///     write(balances.volumeAt(target, loudest));       // For each step.
class BalanceMemory {
 public:
    /// Call at the start of a movement, with the volume that the server reports.
    void observe(const Target& target, const pa_cvolume& reported);
    bool knows(const Target& target) const { return memories_.contains(target); }
    /// The channels' volumes, of which the loudest is `loudest`. Stereo for a target that was never
    /// observed.
    pa_cvolume volumeAt(const Target& target, pa_volume_t loudest);
    /// Forgets the streams that have ended.
    void forgetSinkInputsMissingIn(const ServerMirror& mirror);
    void clear() { memories_.clear(); }

 private:
    struct Memory {
        pa_cvolume balance{};
        pa_cvolume written{};
    };

    std::map<Target, Memory> memories_;
};

/// Sets the volumes of objects on a connected server.
///
/// begin() connects it to a server and end() takes that away, with everything pending. set() sends
/// a value at once, or after the one before; pending() returns the values that an object will have,
/// which is what a row shows in the meantime. Per object one value is in flight, and only the
/// newest one waits behind it, so a drag never queues up.
///
///     writer.begin(server);
///     writer.set(object, {.fraction = 0.4F});
///
/// After sending: the server answers; on PipeWire the mirror is read until it shows that the value
/// was taken, and a value that had no effect is sent a second time, after waking a sink that may
/// never have run; then the next value is sent, or the mirror is read once more to confirm the last
/// one. Main thread.
class VolumeWriter {
 public:
    using Repeat = PendingWrite::Repeat;
    struct Handlers {
        /// The mirror shows the result of an object's last value.
        std::function<void()> confirmed;
        /// The server refused to change the object, for a reason in its own words if it gives one.
        /// Called for each refused value.
        std::function<void(const VolumeObject&, const std::string& reason)> refused;
    };

    /// `mirror` outlives the writer. Handlers are called from the server's callbacks and must not
    /// destroy the writer.
    VolumeWriter(const ServerMirror& mirror, Handlers handlers);

    /// The server must outlive the use, until end().
    void begin(WritableServer& server) { server_ = &server; }
    void end();

    /// Sets all of the object's devices or streams. Has no effect without a connection. With
    /// Repeat::Send the value is sent even if it is pending already, for streams that have joined
    /// the object.
    void set(const VolumeObject& object, const Setting& setting, Repeat repeat = Repeat::Skip);
    /// The object's values once everything pending has arrived; nullopt if nothing is pending.
    std::optional<Setting> pending(const VolumeObject& object) const;
    /// Whether nothing is pending.
    bool isIdle() const { return writes_.empty(); }

    void sinkInputsChanged() { balances_.forgetSinkInputsMissingIn(mirror_); }

 private:
    using WritePtr = std::shared_ptr<PendingWrite>;

    void observeBalances(const VolumeObject& object);
    TargetWrite writeTo(const Target& target, const Setting& wanted, bool isMuteCertain);
    std::vector<TargetWrite> begun(PendingWrite& write);
    void send(const WritePtr& write);
    void answered(const WritePtr& write, int error);
    void await(const WritePtr& write, PendingWrite::Until until);
    void look(const WritePtr& write);
    void judge(const WritePtr& write, double readSeconds);
    void taken(const WritePtr& write, PendingWrite::Echo echo);
    void kept(const WritePtr& write, PendingWrite::Echo echo);
    bool mayNeverHaveRun(const VolumeObject& object) const;
    void woken(const WritePtr& write);
    void repeat(const WritePtr& write);
    void proceed(const WritePtr& write);
    void confirm(const WritePtr& write);
    void finish(const WritePtr& write);

    /// A callback that continues the write by the member function, unless the write has ended or
    /// was replaced.
    template <class... Arguments>
    auto ifStillPending(const WritePtr& write,
                        void (VolumeWriter::*goOn)(const WritePtr&, Arguments...)) {
        return [this, weak = std::weak_ptr(write), goOn](Arguments... arguments) {
            if (const WritePtr pending = weak.lock()) (this->*goOn)(pending, arguments...);
        };
    }

    const ServerMirror& mirror_;
    Handlers handlers_;
    WritableServer* server_ = nullptr;
    BalanceMemory balances_;
    std::map<VolumeObject, WritePtr> writes_;
};

}  // namespace pulse
