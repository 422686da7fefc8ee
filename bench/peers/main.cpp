#include "bench/peers/Measures.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/rigs/PulseAudioServer.hpp"

#include <gio/gio.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

// Measures mixers in turns on one private screen, session bus and sound server, and prints a line
// of JSON for each.
//   peers_bench RUNS PICTURES_FOLDER NAME PROGRAM [ARGUMENT...] [-- NAME PROGRAM [ARGUMENT...]]...
// Or their starts alone, as a table; for programs that never stand still, such as one with a
// cursor:
//   peers_bench RUNS --starts NAME PROGRAM [ARGUMENT...] [-- NAME PROGRAM [ARGUMENT...]]...

namespace {

struct BusEnd {
    void operator()(GTestDBus* bus) const {
        g_test_dbus_down(bus);
        g_object_unref(bus);
    }
};

/// A session bus without any services.
std::unique_ptr<GTestDBus, BusEnd> sessionBus() {
    std::unique_ptr<GTestDBus, BusEnd> bus(g_test_dbus_new(G_TEST_DBUS_NONE));
    g_test_dbus_up(bus.get());
    return bus;
}

std::vector<peers::Mixer> mixersFrom(const std::vector<std::string>& words) {
    std::vector<peers::Mixer> mixers(1);
    for (const std::string& word : words) {
        peers::Mixer& mixer = mixers.back();
        if (word == "--")
            mixers.emplace_back();
        else if (mixer.name.empty())
            mixer.name = word;
        else
            mixer.command.push_back(word);
    }
    return mixers;
}

nlohmann::json jsonOf(const peers::Mixer& mixer, const peers::Samples& samples) {
    return {{"name", mixer.name},
            {"width", mixer.settled.width},
            {"height", mixer.settled.height},
            {"first_picture_ms", samples.firstPicture},
            {"settled_picture_ms", samples.settledPicture},
            {"proportional_kb", samples.proportional},
            {"own_kb", samples.own},
            {"idle_wake_ups", samples.idleWakeUps},
            {"idle_processor_ms", samples.idleProcessor},
            {"change_to_pixel_ms", samples.changeToPixel},
            {"change_processor_ms", samples.changeProcessor},
            {"changes_unseen", samples.changesUnseen}};
}

void measure(peers::Stage& stage, int runs, const std::string& pictures,
             std::vector<peers::Mixer> mixers) {
    for (peers::Mixer& mixer : mixers) {
        stage.learn(mixer);
        mixer.settled.save(pictures + "/" + mixer.name + ".ppm");
    }
    // In turns, so that other load on the machine affects all of them alike.
    std::vector<peers::Samples> samples(mixers.size());
    for (int run = 0; run < runs; ++run)
        for (std::size_t i = 0; i < mixers.size(); ++i)
            stage.run(mixers[i], samples[i]);
    for (std::size_t i = 0; i < mixers.size(); ++i)
        std::printf("%s\n", jsonOf(mixers[i], samples[i]).dump().c_str());
}

void measureStarts(peers::Stage& stage, int runs, const std::vector<peers::Mixer>& programs) {
    std::vector<std::vector<double>> starts(programs.size());
    for (int run = 0; run < runs; ++run)
        for (std::size_t i = 0; i < programs.size(); ++i)
            starts[i].push_back(stage.startOnly(programs[i].command));
    std::puts("start until the first picture, ms: median (shortest to longest)");
    for (std::size_t i = 0; i < programs.size(); ++i) {
        std::ranges::sort(starts[i]);
        std::printf("%-24s %.0f (%.0f to %.0f)\n", programs[i].name.c_str(),
                    starts[i][starts[i].size() / 2], starts[i].front(), starts[i].back());
    }
}

void measureAll(int runs, const std::string& mode, const std::vector<peers::Mixer>& mixers) {
    const auto bus = sessionBus();
    const std::string busAddress = g_test_dbus_get_bus_address(bus.get());
    rigs::ServerFolder folder;
    rigs::PulseAudioServer server(folder);
    server.startAndWait();
    const test::XServer screen;
    test::Environment environment = folder.environment();
    environment["DISPLAY"] = screen.displayName();
    environment["PULSE_SERVER"] = server.address();
    environment["DBUS_SESSION_BUS_ADDRESS"] = busAddress;
    environment["GDK_BACKEND"] = "x11";
    environment["QT_QPA_PLATFORM"] = "xcb";
    environment["WAYLAND_DISPLAY"] = "";
    peers::Stage stage(screen.displayName(), server.address(), "spk", environment);
    if (mode == "--starts")
        measureStarts(stage, runs, mixers);
    else
        measure(stage, runs, mode, mixers);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: peers_bench RUNS PICTURES_FOLDER NAME PROGRAM ... [-- ...]\n");
        return 2;
    }
    try {
        measureAll(std::max(1, std::atoi(argv[1])), argv[2], mixersFrom({argv + 3, argv + argc}));
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "peers_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
