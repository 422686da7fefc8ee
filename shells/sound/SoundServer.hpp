#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <functional>
#include <memory>

/// The machine's sound server as a volume service, with what a shell must know of it. It lies in a
/// module of its own: the server's libraries are a third of what a small program takes to start,
/// and the first picture does not need them. Main thread.
class SoundServer {
 public:
    virtual ~SoundServer() = default;
    virtual std::shared_ptr<AVSystemController> service() = 0;
    /// Called whenever the server has begun to answer, before the notifications that come of it.
    virtual void setReadyHandler(std::function<void()> handler) = 0;
    /// Called when rows have to be read again and no notification says so.
    virtual void setAvailabilityHandler(std::function<void()> handler) = 0;
};

/// What the module exports, by this name: begins to connect. The caller owns the result, and the
/// module stays loaded until the process ends.
using SoundServerEntry = SoundServer* (*)();
inline constexpr const char* soundServerEntryName = "tarnwick_sound_server_open";
inline constexpr const char* soundServerModule = "tarnwick-pulse.so";
