#include "tests/rigs/PulseAudioServer.hpp"

namespace rigs {
namespace {

// One quote within the other: several properties are one argument.
std::string sinkLine(const SoundServer::Sink& sink) {
    std::string properties;
    for (const auto& [name, value] : sink.properties)
        properties += name + "='" + value + "' ";
    std::string line = "load-module module-null-sink norewinds=1 rate=48000 sink_name=" + sink.name;
    if (!properties.empty()) line += " sink_properties=\"" + properties + "\"";
    return line + "\n";
}

}  // namespace

// The socket comes last: whoever connects finds everything there.
std::string PulseAudioServer::script() const {
    std::string lines;
    for (const Sink& sink : sinks_)
        lines += sinkLine(sink);
    if (roleEntries_ == RoleEntries::Kept) lines += "load-module module-stream-restore\n";
    lines += sinks_.empty() ? "load-module module-always-sink\n"
                            : "set-default-sink " + sinks_.front().name + "\n";
    return lines + extraLines_ +
           "load-module module-native-protocol-unix auth-anonymous=1 socket=" +
           folder_.socket().string() + "\n";
}

void PulseAudioServer::beAsInASession() {
    addScriptLine("load-module module-device-restore");
    addScriptLine("load-module module-intended-roles");
}

void PulseAudioServer::start() {
    folder_.write("script.pa", script());
    std::filesystem::remove(folder_.socket());
    process_ = test::ChildProcess({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                                   "--disallow-exit", "--use-pid-file=no", "--high-priority=no",
                                   "--realtime=no", "-F", (folder_.path() / "script.pa").string()},
                                  {.environment = environment(), .log = folder_.log()});
}

void PulseAudioServer::stop(int signal) {
    process_.signal(SIGCONT);
    process_.signal(signal);
    process_.wait();
}

void PulseAudioServer::suspend() {
    process_.signal(SIGSTOP);
    process_.waitUntilStopped();
}

void PulseAudioServer::resume() {
    process_.signal(SIGCONT);
}

}  // namespace rigs
