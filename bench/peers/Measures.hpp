#pragma once

#include "bench/peers/ProcessCost.hpp"
#include "bench/peers/Screen.hpp"
#include "tests/processes/ChildProcess.hpp"
#include "tests/rigs/OtherProgram.hpp"

#include <string>
#include <vector>

namespace peers {

/// A program to be measured.
struct Mixer {
    std::string name;
    std::vector<std::string> command;
    Picture settled{};  ///< Its window once nothing changes any more.
};

/// The samples of one mixer: one for each run, or for each change where noted.
struct Samples {
    std::vector<double> firstPicture;     ///< Milliseconds from the start of the process.
    std::vector<double> settledPicture;   ///< Milliseconds until the picture is final.
    std::vector<double> proportional;     ///< Kilobytes.
    std::vector<double> own;              ///< Kilobytes.
    std::vector<double> idleWakeUps;      ///< A second.
    std::vector<double> idleProcessor;    ///< Milliseconds a second.
    std::vector<double> changeToPixel;    ///< Milliseconds; one for each change.
    std::vector<double> changeProcessor;  ///< Milliseconds per change, without the idle cost.
    int changesUnseen = 0;
};

/// What all mixers are measured on: a screen, a sound server, and a client that sets volumes.
class Stage {
 public:
    /// `environment` is for the mixers' processes.
    Stage(const std::string& displayName, const std::string& soundServer, std::string sink,
          test::Environment environment);

    /// Starts the mixer once without measuring, and remembers its final picture.
    void learn(Mixer& mixer);
    /// Starts a program, waits for its first picture, and ends it. Answers the time until the
    /// picture, in milliseconds.
    double startOnly(const std::vector<std::string>& command);
    /// Starts it, lets it idle, changes the volume under it, and ends it.
    void run(const Mixer& mixer, Samples& samples);

 private:
    void prepare();
    void setVolume(unsigned percent);
    /// Runs the main loop for that long and discards paint events.
    void pass(std::chrono::milliseconds time);
    void measureStart(const Mixer& mixer, Clock::time_point begin, Samples& samples);
    Work measureIdling(pid_t process, Samples& samples);
    void measureChanges(pid_t process, const Work& idleSecond, Samples& samples);
    bool measureChange(unsigned percent, Samples& samples);

    Screen screen_;
    rigs::OtherProgram other_;
    std::string sink_;
    test::Environment environment_;
};

}  // namespace peers
