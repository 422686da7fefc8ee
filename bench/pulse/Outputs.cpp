#include "bench/pulse/Outputs.hpp"

#include "backends/pulse/PulseServer.hpp"
#include "platform/celestial/RoleOutputs.hpp"
#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/Waiting.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Choice = RoleOutputs::Choice;

constexpr int turns = 3;
constexpr int clicksInATurn = 10;
constexpr double watchSeconds = 2;

double secondsSince(Clock::time_point began) {
    return std::chrono::duration<double>(Clock::now() - began).count();
}

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The processor time of the server's programs so far, in seconds.
double processorSeconds(const rigs::SoundServer& server) {
    const std::string home = "HOME=" + server.folder().path().string();
    double ticks = 0;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        const std::string environment = '\0' + contentsOf(process.path() / "environ");
        if (environment.find('\0' + home + '\0') == std::string::npos) continue;
        const std::string stat = contentsOf(process.path() / "stat");
        if (stat.empty()) continue;
        std::istringstream fields(stat.substr(stat.rfind(')') + 2));
        const std::vector<std::string> all(std::istream_iterator<std::string>(fields), {});
        constexpr std::size_t userTime = 11;  // Behind the name: fields 14 and 15 of proc(5).
        ticks += std::stod(all.at(userTime)) + std::stod(all.at(userTime + 1));
    }
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// The share of one core that they take, in percent.
double processorPercent(const rigs::SoundServer& server) {
    const double before = processorSeconds(server);
    const auto began = Clock::now();
    rigs::runFor(watchSeconds);
    constexpr double percent = 100;
    return percent * (processorSeconds(server) - before) / secondsSince(began);
}

double median(std::vector<double> samples) {
    std::ranges::sort(samples);
    return samples[samples.size() / 2];
}

class OutputsBench {
 public:
    explicit OutputsBench(const rigs::SoundServer& server)
        : server_(server), controller_(pulse::connectToServer(server.address())) {
        if (!rigs::waitUntil([this] { return controller_->state() == SoundServer::State::Ready; }))
            throw std::runtime_error("the service is not ready");
    }

    OutputsCost run() {
        for (int turn = 0; turn < turns; ++turn) {
            measure(Choice::Shared, plain_);
            measure(Choice::Apart, apart_);
        }
        choose(Choice::Shared);
        return {sideOf(plain_), sideOf(apart_)};
    }

 private:
    struct Samples {
        std::vector<double> latencies, playing, idle;
    };

    static OutputsCost::Side sideOf(const Samples& samples) {
        return {median(samples.latencies), median(samples.playing), median(samples.idle)};
    }

    void choose(Choice choice) {
        RoleOutputs& outputs = *controller_->roleOutputs();
        outputs.choose(choice);
        if (!rigs::waitUntil([&] { return !outputs.isBusy(); }) || outputs.failure())
            throw std::runtime_error("the outputs cannot be switched: " +
                                     outputs.failure().value_or("no answer"));
    }

    void measure(Choice choice, Samples& samples) {
        choose(choice);
        constexpr double settlingSeconds = 1;
        rigs::runFor(settlingSeconds);
        samples.idle.push_back(processorPercent(server_));
        rigs::OtherProgram program(server_.address());
        const auto stream = program.play({});
        rigs::runFor(settlingSeconds);
        samples.playing.push_back(processorPercent(server_));
        const auto ear = program.record("spk.monitor");
        rigs::runFor(settlingSeconds);
        for (int click = 0; click < clicksInATurn; ++click)
            samples.latencies.push_back(latencyOf(*stream, *ear));
    }

    /// From the first loud sample that a program writes until the monitor has it.
    static double latencyOf(rigs::PlayingStream& stream, const rigs::RecordingStream& ear) {
        constexpr float loud = 0.5F;
        const auto began = Clock::now();
        stream.setLevel(loud);
        rigs::waitUntil([&] { return ear.left() > loud / 2; });
        constexpr double milliseconds = 1000;
        const double latency = milliseconds * secondsSince(began);
        stream.setLevel(0);
        rigs::waitUntil([&] { return ear.left() == 0; });
        return latency;
    }

    const rigs::SoundServer& server_;
    std::shared_ptr<SoundServer> controller_;
    Samples plain_;
    Samples apart_;
};

}  // namespace

OutputsCost measureOutputs(const rigs::SoundServer& server) {
    return OutputsBench(server).run();
}
