#include "backends/glib/GLibRunLoop.hpp"
#include "bench/pulse/Measures.hpp"
#include "platform/foundation/NSLog.hpp"
#include "tests/rigs/SoundServer.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// The volume service against a bare client of the same library, on both servers in one run. Fails
// when a median is more than 1.5 times the bare client's.

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

}  // namespace

int main() {
    setLogSink([](const std::string&) {});
    GLibRunLoop loop;
    bool holds = true;
    std::printf(
        "| milliseconds, median / 99th percentile | server | bare client | service |"
        " ratio |\n|---|---|---|---|---|\n");
    for (const auto kind : {rigs::ServerKind::PulseAudio, rigs::ServerKind::PipeWire}) {
        rigs::ServerFolder folder;
        const auto server = rigs::makeServer(kind, folder);
        server->startAndWait();
        for (const Comparison& comparison : measure(*server))
            holds &= report(kind, comparison);
    }
    std::printf("%s\n", holds ? "Every median is at most 1.5 times the bare client's."
                              : "A median is more than 1.5 times the bare client's.");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
