#include "tests/rigs/PipeWireServer.hpp"

#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <stdexcept>

namespace rigs {
namespace {

constexpr const char* remembersRolesText = "what is set for roles is remembered";

// The first has the highest priority and so becomes the default. Each runs from the start: from
// PipeWire 1.4 on, one that has never run takes volumes and goes on reporting 100 %. The monitor
// hears what the device plays, with its volume, as PulseAudio's does.
std::string sinkObject(const SoundServer::Sink& sink, std::size_t position) {
    std::string properties;
    for (const auto& [name, value] : sink.properties)
        properties += " \"" + name + "\" = \"" + value + "\"";
    return "{ factory = adapter args = { factory.name = support.null-audio-sink"
           " node.name = \"" +
           sink.name + "\" node.description = \"" + sink.name +
           "\""
           " media.class = Audio/Sink audio.rate = 48000 audio.position = [ FL FR ]"
           " object.linger = true node.always-process = true monitor.channel-volumes = true"
           " priority.session = " +
           std::to_string(2000 - position) + properties + " } }\n";
}

}  // namespace

void PipeWireServer::writeConfiguration() const {
    std::string objects;
    for (std::size_t i = 0; i < sinks_.size(); ++i)
        objects += sinkObject(sinks_[i], i);
    folder_.write("config/pipewire/pipewire.conf.d/rig.conf",
                  "context.objects = [\n" + objects + extraObjects_ + "]\n");
    folder_.write("config/pipewire/pipewire-pulse.conf.d/rig.conf",
                  "pulse.properties = { server.address = [ \"unix:native\" { address = \"" +
                      lookersAddress() + "\" client.access = \"restricted\" } ] }\n");
    writeWirePlumberFiles(folder_, bluetooth_, remembersRolesText);
}

test::ChildProcess PipeWireServer::startProgram(const std::string& name) const {
    return test::ChildProcess({name}, {.environment = environment(), .log = folder_.log()});
}

void PipeWireServer::start() {
    writeConfiguration();
    core_ = startProgram("pipewire");
    const std::filesystem::path core = folder_.path() / "pipewire-0";
    if (!waitUntil([&] { return takesConnections(core); }))
        throw std::runtime_error("PipeWire takes no connection: " + folder_.logged());
    if (manager_ == SessionManager::WirePlumber) startSessionManager();
    pulseServer_ = startProgram("pipewire-pulse");
}

// A client that has asked for the session manager's memory and leaves before the answer, as a short
// question to a starting server does, leaves the core waiting: it announces no change of that
// memory any more. So nobody asks before the session manager itself says that it is there.
void PipeWireServer::startSessionManager() {
    const std::size_t said = folder_.logged().size();
    sessionManager_ = startProgram("wireplumber");
    const auto remembersRoles = [&] {
        return folder_.logged().find(remembersRolesText, said) != std::string::npos;
    };
    if (!waitUntil(remembersRoles))
        throw std::runtime_error("The session manager does not come up: " + folder_.logged());
}

void PipeWireServer::stop(int signal) {
    resume();
    for (test::ChildProcess* program : {&pulseServer_, &sessionManager_, &core_})
        program->signal(signal);
    for (test::ChildProcess* program : {&pulseServer_, &sessionManager_, &core_})
        program->wait();
}

void PipeWireServer::suspend() {
    pulseServer_.signal(SIGSTOP);
    pulseServer_.waitUntilStopped();
}

void PipeWireServer::resume() {
    pulseServer_.signal(SIGCONT);
}

std::string PipeWireServer::lookersAddress() const {
    return "unix:" + (folder_.path() / "pulse" / "lookers").string();
}

void PipeWireServer::restartSessionManager() {
    sessionManager_.signal(SIGKILL);
    sessionManager_.wait();
    startSessionManager();
}

void PipeWireServer::restartPulseServer() {
    pulseServer_.signal(SIGKILL);
    pulseServer_.wait();
    pulseServer_ = startProgram("pipewire-pulse");
}

}  // namespace rigs
