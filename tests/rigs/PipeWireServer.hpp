#pragma once

#include "tests/rigs/SoundServer.hpp"
#include "tests/rigs/WirePlumberFiles.hpp"

#include <array>

namespace rigs {

/// PipeWire with its session manager and its server for PulseAudio's clients. It knows no hardware:
/// it would find this machine's.
class PipeWireServer : public SoundServer {
 public:
    enum class SessionManager { None, WirePlumber };

    using SoundServer::SoundServer;
    ServerKind kind() const override { return ServerKind::PipeWire; }

    /// Before start(): look for Bluetooth devices on the system bus of the environment. With it the
    /// session manager gives no device a volume, as it does by default to each new one: in several
    /// turns, each of which would undo what the headset, the mixer or a test has set meanwhile.
    void setBluetooth(Bluetooth bluetooth) { bluetooth_ = bluetooth; }
    /// Before start(): without one, isReady() is never true.
    void setSessionManager(SessionManager manager) { manager_ = manager; }
    /// Before start(): one more object of the core, in the form of its configuration.
    void addObject(const std::string& object) { extraObjects_ += object + "\n"; }

    /// Runs the loop until the core takes connections and the session manager remembers what is set
    /// for roles.
    void start() override;
    void stop(int signal) override;
    /// Only what PulseAudio's clients talk to, without the core and the devices.
    void suspend() override;
    void resume() override;
    /// Ends what PulseAudio's clients talk to and starts it anew; core and devices go on.
    void restartPulseServer();
    /// The same for the session manager.
    void restartSessionManager();

    /// As address(), for clients that may look at everything and change nothing.
    std::string lookersAddress() const;

 private:
    void writeConfiguration() const;
    void startSessionManager();
    test::ChildProcess startProgram(const std::string& name) const;

    Bluetooth bluetooth_ = Bluetooth::Off;
    SessionManager manager_ = SessionManager::WirePlumber;
    std::string extraObjects_;
    test::ChildProcess core_;
    test::ChildProcess sessionManager_;
    test::ChildProcess pulseServer_;
};

}  // namespace rigs
