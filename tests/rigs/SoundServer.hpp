#pragma once

#include "tests/rigs/ServerFolder.hpp"

#include <csignal>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace rigs {

enum class ServerKind { PulseAudio, PipeWire };
std::string nameOf(ServerKind kind);
std::ostream& operator<<(std::ostream& stream, ServerKind kind);

/// A sound server of the test's own. It begins with two devices without sound, "spk" (the default,
/// which says nothing of itself) and "hp" (headphones), both in stereo.
class SoundServer {
 public:
    struct Sink {
        std::string name;
        std::map<std::string, std::string> properties{};
    };

    explicit SoundServer(ServerFolder& folder) : folder_(folder) {}
    virtual ~SoundServer() = default;
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    virtual ServerKind kind() const = 0;

    /// Before start(): one more device of its own.
    void addSink(const Sink& sink) { sinks_.push_back(sink); }
    /// Before start(): these devices in place of the two. Without any there is the server's own
    /// placeholder, and isReady() is never true.
    void setSinks(std::vector<Sink> sinks) { sinks_ = std::move(sinks); }
    /// Before start(): the server sends streams to the outputs of their roles and keeps the
    /// volumes of its devices, as PulseAudio does in a session. PipeWire's session manager always
    /// does.
    virtual void beAsInASession() {}
    /// Before start(): a variable of its programs.
    void setEnvironment(const std::string& name, const std::string& value) {
        environment_[name] = value;
    }

    /// Starts its programs, and returns before it answers.
    virtual void start() = 0;
    /// Ends them by that signal and waits for their end.
    virtual void stop(int signal = SIGTERM) = 0;
    /// Whatever the clients talk to stops, with its connections open.
    virtual void suspend() = 0;
    virtual void resume() = 0;
    /// Whether clients are answered and its devices are there. Costs some milliseconds.
    bool isReady() const;
    /// start(), and the loop runs until isReady(). Throws what the programs said when that fails.
    void startAndWait();

    std::string address() const { return folder_.address(); }
    ServerFolder& folder() const { return folder_; }
    /// Runs the command line client on it and answers what it printed.
    std::string pactl(const std::vector<std::string>& arguments) const;
    /// One more device while it runs; answers the number of its module, which ends it when it is
    /// unloaded.
    std::string loadSink(const std::string& name) const;
    /// The volume of a device's channels in the server's units.
    std::vector<unsigned> sinkVolumes(const std::string& sink) const;

 protected:
    test::Environment environment() const;

    ServerFolder& folder_;
    std::vector<Sink> sinks_{{"spk"}, {"hp", {{"device.form_factor", "headphone"}}}};
    test::Environment environment_;
};

/// The folder outlives the server.
std::unique_ptr<SoundServer> makeServer(ServerKind kind, ServerFolder& folder);

/// "front-left: 24642 /  38% / -25.49 dB": the numbers before each percentage.
std::vector<unsigned> volumesIn(const std::string& listing);

}  // namespace rigs
