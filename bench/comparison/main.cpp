#include "bench/comparison/Openings.hpp"
#include "bench/comparison/Reading.hpp"
#include "bench/comparison/Turning.hpp"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstdlib>
#include <exception>

// Uses three mixers as a desktop user does, and prints the measurements as JSON.
//   comparison_bench SESSIONS OPENINGS PICTURES_FOLDER

namespace {

using namespace comparison;

nlohmann::json measureOpenings(int sessions, int openings, const std::string& pictures) {
    const std::vector<Mixer> mixers = {ourMixer(), panelsMixer(), pavucontrol()};
    std::vector<Openings> first(mixers.size());
    std::vector<Openings> later(mixers.size());
    for (int session = 0; session < sessions; ++session) {
        Desk desk({});
        OpeningWatch watch(desk);
        // In turns, so that other load on the machine affects all of them alike.
        for (int opening = 0; opening < openings; ++opening)
            for (std::size_t i = 0; i < mixers.size(); ++i) {
                watch.open(mixers[i], opening == 0 ? first[i] : later[i]);
                watch.lastPicture().save(pictures + "/" + mixers[i].windowClass + ".ppm");
            }
    }
    nlohmann::json all;
    for (std::size_t i = 0; i < mixers.size(); ++i)
        all.push_back({{"name", mixers[i].name},
                       {"first_painted_ms", first[i].painted},
                       {"first_complete_ms", first[i].complete},
                       {"painted_ms", later[i].painted},
                       {"complete_ms", later[i].complete}});
    return all;
}

nlohmann::json turn(const Mixer& mixer, Rows rows) {
    const Turning turning = turnMusicDown(mixer, rows, "turning-" + mixer.name);
    return {{"name", mixer.name},
            {"clicks", turning.clicks},
            {"music_db", turning.music},
            {"ringtone_db", turning.ringtone}};
}

nlohmann::json readAll() {
    nlohmann::json all;
    for (const Reading& reading : readMixers())
        all.push_back(
            {{"name", reading.name}, {"words", reading.words}, {"sliders", reading.sliders}});
    return all;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: comparison_bench SESSIONS OPENINGS PICTURES_FOLDER\n");
        return 2;
    }
    try {
        const nlohmann::json result = {
            {"turning",
             {turn(ourMixer(), Rows::Default), turn(ourMixerKeepingApart(), Rows::Apart),
              turn(ourMixerWithThePlayer(), Rows::WithThePlayer),
              turn(panelsMixer(), Rows::Default), turn(pavucontrol(), Rows::Default)}},
            {"reading", readAll()},
            {"openings", measureOpenings(std::atoi(argv[1]), std::atoi(argv[2]), argv[3])}};
        std::printf("%s\n", result.dump(1).c_str());
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "comparison_bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
