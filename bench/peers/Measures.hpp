#pragma once

#include "bench/peers/ProcessCost.hpp"
#include "bench/peers/Screen.hpp"
#include "tests/rigs/ChildProcess.hpp"
#include "tests/rigs/OtherProgram.hpp"

#include <string>
#include <vector>

namespace peers {

/// A program to be measured.
struct Mixer {
    std::string name;
    std::vector<std::string> command;
    Picture settled{};  ///< What its window shows once everything is there.
};

/// All that is measured of one mixer; one entry a run, but for the changes.
struct Samples {
    std::vector<double> firstPicture;     ///< Milliseconds from the start of the process.
    std::vector<double> settledPicture;   ///< Milliseconds until it looks as it will remain.
    std::vector<double> proportional;     ///< Kilobytes.
    std::vector<double> own;              ///< Kilobytes.
    std::vector<double> idleWakeUps;      ///< A second.
    std::vector<double> idleProcessor;    ///< Milliseconds a second.
    std::vector<double> changeToPixel;    ///< Milliseconds, one entry a change.
    std::vector<double> changeProcessor;  ///< Milliseconds a change, the idle share taken off.
    int changesUnseen = 0;
};

/// Where all mixers are measured: one screen, one sound server, one other client that sets volumes.
class Stage {
 public:
    /// `environment` is for the mixers' processes.
    Stage(const std::string& displayName, const std::string& soundServer, std::string sink,
          rigs::Environment environment);

    /// Starts the mixer once, uncounted, and remembers how it looks when nothing moves any more.
    void learn(Mixer& mixer);
    /// Starts it, lets it idle, changes the volume under it, and ends it.
    void run(const Mixer& mixer, Samples& samples);

 private:
    void prepare();
    void setVolume(unsigned percent);
    /// Runs for that long, whatever is painted meanwhile.
    void pass(std::chrono::milliseconds time);
    void measureStart(const Mixer& mixer, Clock::time_point begin, Samples& samples);
    Work measureIdling(pid_t process, Samples& samples);
    void measureChanges(pid_t process, const Work& idleSecond, Samples& samples);
    bool measureChange(unsigned percent, Samples& samples);

    Screen screen_;
    rigs::OtherProgram other_;
    std::string sink_;
    rigs::Environment environment_;
};

}  // namespace peers
