#include "tests/rigs/SoundServer.hpp"

#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/PipeWireServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <iterator>
#include <sstream>
#include <stdexcept>

namespace rigs {

std::string nameOf(ServerKind kind) {
    return kind == ServerKind::PulseAudio ? "PulseAudio" : "PipeWire";
}

std::ostream& operator<<(std::ostream& stream, ServerKind kind) {
    return stream << nameOf(kind);
}

bool SoundServer::isReady() const {
    if (sinks_.empty()) return false;
    try {
        return pactl({"get-default-sink"}) == sinks_.front().name + "\n";
    } catch (const std::runtime_error&) {
        return false;
    }
}

void SoundServer::startAndWait() {
    start();
    if (!waitUntil([&] { return isReady(); }))
        throw std::runtime_error(nameOf(kind()) + " does not come up: " + folder_.logged());
}

std::string SoundServer::pactl(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {"pactl", "--server=" + address()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return test::outputOf(words, folder_.environment());
}

std::string SoundServer::loadSink(const std::string& name) const {
    std::vector<std::string> words = {"load-module", "module-null-sink", "sink_name=" + name};
    if (kind() == ServerKind::PipeWire)
        words.emplace_back("sink_properties=node.always-process=true");
    const std::string answer = pactl(words);
    return answer.substr(0, answer.find('\n'));
}

std::vector<unsigned> SoundServer::sinkVolumes(const std::string& sink) const {
    return volumesIn(pactl({"get-sink-volume", sink}));
}

test::Environment SoundServer::environment() const {
    test::Environment all = folder_.environment();
    for (const auto& [name, value] : environment_)
        all[name] = value;
    return all;
}

std::unique_ptr<SoundServer> makeServer(ServerKind kind, ServerFolder& folder) {
    if (kind == ServerKind::PulseAudio) return std::make_unique<PulseAudioServer>(folder);
    return std::make_unique<PipeWireServer>(folder);
}

std::vector<unsigned> volumesIn(const std::string& listing) {
    std::istringstream stream(listing);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    std::vector<unsigned> volumes;
    for (std::size_t i = 2; i < words.size(); ++i)
        if (words[i].ends_with('%'))
            volumes.push_back(static_cast<unsigned>(std::stoul(words[i - 2])));
    return volumes;
}

}  // namespace rigs
