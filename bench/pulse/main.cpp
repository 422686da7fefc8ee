#include "backends/glib/GLibRunLoop.hpp"
#include "bench/pulse/Measures.hpp"
#include "bench/pulse/Outputs.hpp"
#include "platform/foundation/NSLog.hpp"
#include "tests/rigs/SoundServer.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// Compares the volume service with a bare client of the same library, and a session with outputs
// for roles with one without, on both servers in one run. Fails if a median is more than 1.5 times
// the bare client's, or if the outputs cost more than their limits.

namespace {

constexpr double limit = 1.5;

double quantile(Samples samples, double part) {
    std::ranges::sort(samples);
    return samples[static_cast<std::size_t>(part * static_cast<double>(samples.size() - 1))];
}

bool report(rigs::ServerKind kind, const Comparison& comparison) {
    const double bare = quantile(comparison.bare, 0.5);
    const double bareLate = quantile(comparison.bare, 0.99);
    const double service = quantile(comparison.service, 0.5);
    const double serviceLate = quantile(comparison.service, 0.99);
    std::printf("| %-33s | %-10s | %6.3f / %6.3f | %6.3f / %6.3f | %.2f / %.2f |\n",
                comparison.what.c_str(), rigs::nameOf(kind).c_str(), bare, bareLate, service,
                serviceLate, service / bare, serviceLate / bareLate);
    return service <= limit * bare;
}

// Some milliseconds are within what the same measurement varies by without outputs.
constexpr double mostAddedMs = 10;
constexpr double mostAddedPercent = 3;
constexpr double mostAddedIdlePercent = 0.5;

bool report(rigs::ServerKind kind, const OutputsCost& cost) {
    const auto row = [&](const char* what, double plain, double apart) {
        std::printf("| %-45s | %-10s | %6.2f | %6.2f | %+.2f |\n", what, rigs::nameOf(kind).c_str(),
                    plain, apart, apart - plain);
    };
    row("latency to the real output, ms", cost.plain.latencyMs, cost.apart.latencyMs);
    row("processor while a stream plays, % of one core", cost.plain.playingPercent,
        cost.apart.playingPercent);
    row("processor while nothing plays, % of one core", cost.plain.idlePercent,
        cost.apart.idlePercent);
    return cost.apart.latencyMs - cost.plain.latencyMs <= mostAddedMs &&
           cost.apart.playingPercent - cost.plain.playingPercent <= mostAddedPercent &&
           cost.apart.idlePercent - cost.plain.idlePercent <= mostAddedIdlePercent;
}

constexpr rigs::ServerKind bothServers[] = {rigs::ServerKind::PulseAudio,
                                            rigs::ServerKind::PipeWire};

}  // namespace

int main() {
    setLogSink([](const std::string&) {});
    glib::GLibRunLoop loop;
    bool holds = true;
    std::printf(
        "| milliseconds, median / 99th percentile | server | bare client | service |"
        " ratio |\n|---|---|---|---|---|\n");
    for (const auto kind : bothServers) {
        rigs::ServerFolder folder;
        const auto server = rigs::makeServer(kind, folder);
        server->startAndWait();
        for (const Comparison& comparison : measure(*server))
            holds &= report(kind, comparison);
    }
    std::printf("%s\n", holds ? "Every median is at most 1.5 times the bare client's."
                              : "A median is more than 1.5 times the bare client's.");
    bool isCheap = true;
    std::printf(
        "\n| outputs for roles | server | without | with | added |\n|---|---|---|---|---|\n");
    for (const auto kind : bothServers) {
        rigs::ServerFolder folder;
        const auto server = rigs::makeServer(kind, folder);
        server->beAsInASession();
        server->startAndWait();
        isCheap &= report(kind, measureOutputs(*server));
    }
    std::printf("%s\n", isCheap ? "The outputs cost no more than their limits."
                                : "The outputs cost more than their limits.");
    return holds && isCheap ? EXIT_SUCCESS : EXIT_FAILURE;
}
