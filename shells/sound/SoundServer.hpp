#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <memory>
#include <string>

/// The machine's sound server as a volume service, with what a shell must know of it. It lies in a
/// module of its own: the server's libraries are a third of what a small program takes to start,
/// and can be loaded beside the rest of it. Main thread.
class SoundServer {
 public:
    enum class Answers { No, Yes };
    /// Whether somebody looks at the volumes, or no more than hears of them.
    enum class Attention { Resting, Watched };

    virtual ~SoundServer() = default;
    virtual std::shared_ptr<AVSystemController> service() = 0;
    /// Whether what was set has not been confirmed by the server yet.
    virtual bool isWriting() const = 0;
    /// Watched at first. Resting: nothing wakes up that waits for no announcement.
    virtual void setAttention(Attention attention) = 0;
    /// Called whenever the server has begun to answer or has ceased to, before the notifications
    /// that come of it. Until the first call it does not answer.
    virtual void setAnswersHandler(std::function<void(Answers)> handler) = 0;
    /// Called when rows have to be read again and no notification says so.
    virtual void setAvailabilityHandler(std::function<void()> handler) = 0;
    /// Called when the server refuses what was set, with a category that names what it does not
    /// change, and the server's reason; once, not for each step of a drag.
    using RefusalHandler =
        std::function<void(const std::string& category, const std::string& reason)>;
    virtual void setRefusalHandler(RefusalHandler handler) = 0;
};

/// What the module exports, by this name: begins to connect. The address is as libpulse takes it;
/// nullptr: where the environment and the user's configuration say. The caller owns the result, and
/// the module stays loaded until the process ends.
using SoundServerEntry = SoundServer* (*)(const char* address);
inline constexpr const char* soundServerEntryName = "tarnwick_sound_server_open";
inline constexpr const char* soundServerModule = "tarnwick-pulse.so";

/// The module's entry, or nullptr and why there is none.
struct LoadedSoundServer {
    SoundServerEntry entry = nullptr;
    std::string error;
};
/// Loads the module (its file). Takes some milliseconds. Any thread.
LoadedSoundServer loadSoundServer(const std::string& module);

/// A server that is being connected to, or why there is none.
struct OpenedSoundServer {
    std::unique_ptr<SoundServer> server;
    std::string error;
};
OpenedSoundServer openSoundServer(const LoadedSoundServer& module, const NSString& address);
