#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "backends/pulse/PulseServer.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/PipeWireServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using rigs::runFor;
using rigs::ServerKind;
using rigs::waitUntil;

/// The real service against a real server, on a GLib loop in real time.
class ServiceFixture : public testing::Test {
 protected:
    using Channels = std::vector<unsigned>;
    struct Posted {
        std::string category;
        float volume = 0;
        std::string route{};  ///< At that moment.
    };

    explicit ServiceFixture(ServerKind kind);
    ~ServiceFixture() override;

    void startController();
    /// Starts both and waits until the service has read and told everything.
    void startBoth();
    /// The same with a server that runs already.
    void startControllerAndWait();

    /// -1 when it can't be read.
    float volumeOf(const std::string& category);
    /// "(null)" when there is none.
    std::string routeOf(const std::string& category) {
        return describe(controller_->routeForCategory(category));
    }
    bool isReady() const { return controller_->state() == SoundServer::State::Ready; }
    bool isUnavailable() const { return controller_->state() == SoundServer::State::Unavailable; }
    /// Waits until the category shows the volume and the notification has said so.
    testing::AssertionResult waitForVolume(const std::string& category, float volume);
    /// Waits until the category shows the volume, told or not.
    bool waitToRead(const std::string& category, float volume);
    bool waitForRoute(const std::string& category, const std::string& route);
    /// Waits until another client sees the device's channels at these volumes.
    bool waitForSink(const std::string& sink, const Channels& channels);
    /// Waits until the server has those volumes for the stream's channels, within a millionth of
    /// what the volume is.
    static bool waitForStream(const rigs::PlayingStream& stream, const Channels& channels);
    /// The volumes told of the category, in their order.
    std::vector<float> volumesPosted(const std::string& category) const;
    /// Plays in that role, as a program of its own, and waits until the server has the stream at
    /// that volume.
    std::unique_ptr<rigs::PlayingStream> play(const std::string& role,
                                              const Channels& volume = {65536, 65536});
    const Posted* lastPosted(const std::string& category) const;

    rigs::ServerFolder folder_;
    std::unique_ptr<rigs::SoundServer> server_;
    glib::GLibRunLoop loop_;
    std::shared_ptr<SoundServer> controller_;
    std::vector<Posted> posted_;
    std::unique_ptr<rigs::OtherProgram> program_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

/// For what holds on either server: the suite is instantiated with bothServers.
class OnBothServers : public ServiceFixture, public testing::WithParamInterface<ServerKind> {
 protected:
    OnBothServers() : ServiceFixture(GetParam()) {}
    bool isPipeWire() const { return GetParam() == ServerKind::PipeWire; }
};

class OnPulseAudio : public ServiceFixture {
 protected:
    OnPulseAudio() : ServiceFixture(ServerKind::PulseAudio) {}
    rigs::PulseAudioServer& pulseAudio() { return static_cast<rigs::PulseAudioServer&>(*server_); }
};

class OnPipeWire : public ServiceFixture {
 protected:
    OnPipeWire() : ServiceFixture(ServerKind::PipeWire) {}
    rigs::PipeWireServer& pipeWire() { return static_cast<rigs::PipeWireServer&>(*server_); }
};

inline const auto bothServers = testing::Values(ServerKind::PulseAudio, ServerKind::PipeWire);
inline std::string serverName(const testing::TestParamInfo<ServerKind>& info) {
    return rigs::nameOf(info.param);
}

inline constexpr float unreadable = -1;
/// Half the server's smallest step.
inline constexpr float volumeTolerance = 0.5F / 65536;
