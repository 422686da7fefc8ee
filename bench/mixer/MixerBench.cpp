#include "bench/mixer/MixerOnCanvas.hpp"

#include <benchmark/benchmark.h>

// Measures the mixer's operations by the number of visible categories. bench/mixer/scaling.py
// checks the results against their limits.

namespace {

MixerOnCanvas mixerFor(const benchmark::State& state) {
    return MixerOnCanvas(static_cast<int>(state.range(0)));
}

void assembly(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    for (auto _ : state)
        mixer.assemble();
}

void refresh(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    for (auto _ : state)
        mixer.mixer().updateValues();
}

void notification(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    double area = 0;
    for (auto _ : state) {
        mixer.announce();
        area = mixer.paintDamage();
    }
    state.counters["painted_points"] = area;
}

void dragStep(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    mixer.press();
    mixer.paintDamage();
    double area = 0;
    for (auto _ : state) {
        mixer.dragStep();
        area = mixer.paintDamage();
    }
    state.counters["painted_points"] = area;
}

void paint(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    for (auto _ : state) {
        mixer.damageEverything();
        mixer.paintDamage();
    }
}

void repeatedPaint(benchmark::State& state) {
    MixerOnCanvas mixer = mixerFor(state);
    mixer.paintDamage();
    double area = 0;
    for (auto _ : state)
        area += mixer.paintDamage();
    state.counters["painted_points"] = area;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (int categories : {5, 100, 1000, 10000})
        benchmark->Arg(categories);
    benchmark->Unit(benchmark::kMicrosecond);
}

}  // namespace

BENCHMARK(assembly)->Apply(sizes);
BENCHMARK(refresh)->Apply(sizes);
BENCHMARK(notification)->Apply(sizes);
BENCHMARK(dragStep)->Apply(sizes);
BENCHMARK(paint)->Apply(sizes);
BENCHMARK(repeatedPaint)->Apply(sizes);
