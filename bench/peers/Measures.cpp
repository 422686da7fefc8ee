#include "bench/peers/Measures.hpp"

#include <glib.h>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace peers {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds longestStart(20000);
// Memory is read this long after the window looks complete, so that deferred work is included.
constexpr milliseconds settlingTime(1500);
constexpr milliseconds idleTime(4000);
constexpr milliseconds longestChange(1000);
// The pause between two changes is longer than any animation of a slider. It varies, so that it
// stays out of step with frame clocks and level meters.
constexpr milliseconds pause(120);
constexpr int pauseSteps = 17;

constexpr unsigned volumeAtStart = 40;  // Percent.
constexpr int changesEachRun = 20;
// Percent. Successive values differ enough to change at least one pixel.
constexpr unsigned volumes[] = {70, 25, 55, 90, 10};

double millisecondsBetween(Clock::time_point begin, Clock::time_point end) {
    return std::chrono::duration<double, std::milli>(end - begin).count();
}

}  // namespace

Stage::Stage(const std::string& displayName, const std::string& soundServer, std::string sink,
             test::Environment environment)
    : screen_(displayName),
      other_(soundServer),
      sink_(std::move(sink)),
      environment_(std::move(environment)) {}

void Stage::prepare() {
    setVolume(volumeAtStart);
    pass(settlingTime);
    screen_.lookForNewWindow();
}

// Returns when the request has left this process.
void Stage::setVolume(unsigned percent) {
    constexpr unsigned hundred = 65536;
    other_.sendSinkVolume(sink_, percent * hundred / 100);
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

void Stage::pass(milliseconds time) {
    const Clock::time_point end = Clock::now() + time;
    while (screen_.waitForPaint(end)) {
    }
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

void Stage::learn(Mixer& mixer) {
    prepare();
    const test::ChildProcess process(mixer.command, {.environment = environment_});
    const Clock::time_point deadline = Clock::now() + longestStart;
    Picture before;
    while (Clock::now() < deadline) {
        pass(settlingTime);
        Picture now = screen_.picture();
        if (now.showsSomething() && now == before) {
            mixer.settled = std::move(now);
            return;
        }
        before = std::move(now);
    }
    throw std::runtime_error(mixer.name + " never stands still");
}

double Stage::startOnly(const std::vector<std::string>& command) {
    prepare();
    const Clock::time_point begin = Clock::now();
    test::ChildProcess process(command, {.environment = environment_});
    double took = 0;
    while (const auto told = screen_.waitForPaint(begin + longestStart)) {
        if (!screen_.picture().showsSomething()) continue;
        took = millisecondsBetween(begin, *told);
        break;
    }
    if (took == 0) throw std::runtime_error(command.front() + " shows nothing");
    process.signal(SIGTERM);
    process.wait();
    return took;
}

void Stage::run(const Mixer& mixer, Samples& samples) {
    prepare();
    const Clock::time_point begin = Clock::now();
    test::ChildProcess process(mixer.command, {.environment = environment_});
    measureStart(mixer, begin, samples);
    pass(settlingTime);
    const Memory memory = memoryOf(process.id());
    samples.proportional.push_back(memory.proportional);
    samples.own.push_back(memory.own);
    const Work idleSecond = measureIdling(process.id(), samples);
    measureChanges(process.id(), idleSecond, samples);
    process.signal(SIGTERM);
    process.wait();
}

void Stage::measureStart(const Mixer& mixer, Clock::time_point begin, Samples& samples) {
    const Clock::time_point deadline = begin + longestStart;
    bool isFirst = true;
    while (const auto told = screen_.waitForPaint(deadline)) {
        const Picture now = screen_.picture();
        const double took = millisecondsBetween(begin, *told);
        if (isFirst && now.showsSomething()) {
            samples.firstPicture.push_back(took);
            isFirst = false;
        }
        if (now != mixer.settled) continue;
        samples.settledPicture.push_back(took);
        return;
    }
    screen_.picture().save(mixer.name + "-unsettled.ppm");
    throw std::runtime_error(mixer.name + " does not come to look as it did before");
}

/// Returns its cost per second.
Work Stage::measureIdling(pid_t process, Samples& samples) {
    const Work before = workOf(process);
    pass(idleTime);
    const Work work = workOf(process) - before;
    const double seconds = std::chrono::duration<double>(idleTime).count();
    samples.idleWakeUps.push_back(work.wakeUps / seconds);
    samples.idleProcessor.push_back(work.processorMilliseconds / seconds);
    return {work.processorMilliseconds / seconds, work.wakeUps / seconds};
}

void Stage::measureChanges(pid_t process, const Work& idleSecond, Samples& samples) {
    const Clock::time_point begin = Clock::now();
    const Work before = workOf(process);
    for (int i = 0; i < changesEachRun; ++i) {
        if (!measureChange(volumes[static_cast<std::size_t>(i) % std::size(volumes)], samples))
            ++samples.changesUnseen;
        pass(pause + milliseconds(i % pauseSteps));
    }
    const double seconds = millisecondsBetween(begin, Clock::now()) / 1000;
    const double idle = idleSecond.processorMilliseconds * seconds;
    const double used = (workOf(process) - before).processorMilliseconds - idle;
    samples.changeProcessor.push_back(std::max(used, 0.0) / changesEachRun);
}

bool Stage::measureChange(unsigned percent, Samples& samples) {
    const Picture before = screen_.picture();
    const Clock::time_point begin = Clock::now();
    setVolume(percent);
    while (const auto told = screen_.waitForPaint(begin + longestChange)) {
        if (screen_.picture() == before) continue;  // Repainted without a difference.
        samples.changeToPixel.push_back(millisecondsBetween(begin, *told));
        return true;
    }
    return false;
}

}  // namespace peers
