#pragma once

#include "tests/processes/ChildProcess.hpp"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// A running program and its standard streams. Every wait has a deadline; when it passes,
/// std::runtime_error is thrown with what the program has written to standard error.
///
///     RunningProgram program({"tarnwickctl", "watch"});
///     EXPECT_EQ(program.nextLine(), "Ringtone: 50%");
///     program.signal(SIGTERM);
///     EXPECT_EQ(program.finish(), 0);
class RunningProgram {
 public:
    enum class Output { Pipe, Terminal };
    enum class Input { Nothing, Pipe };
    /// Standard error: kept for complaints(), or a pipe whose reader has gone.
    enum class Error { Kept, WithoutReader };
    struct Setting {
        Environment environment{};
        Input input = Input::Nothing;
        Output output = Output::Pipe;
        Error error = Error::Kept;
    };

    explicit RunningProgram(const std::vector<std::string>& words)
        : RunningProgram(words, Setting{}) {}
    RunningProgram(const std::vector<std::string>& words, const Setting& setting);
    /// Ends the program if it still runs.
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Throws if the program has closed its input.
    void write(std::string_view bytes) const;
    void closeInput();
    /// The next line without its end; nullopt at the end of the output.
    std::optional<std::string> nextLine();
    /// The next line if one comes soon.
    std::optional<std::string> lineSoon();
    /// The rest of the output, byte for byte.
    std::string rest();
    void closeOutput();
    /// What it has written to standard error so far.
    std::string complaints() const;
    /// Waits until it has written that to standard error.
    void waitForComplaint(std::string_view text) const;

    pid_t id() const { return process_.id(); }
    void signal(int number) const { process_.signal(number); }
    /// Closes its input and waits for its end; its exit status, or minus the signal that ended it.
    int finish();

 private:
    using Time = std::chrono::steady_clock::time_point;

    std::optional<std::string> lineWithin(double seconds);
    /// Appends to `unread_`; returns false after the deadline or at the end of the output.
    bool readMore(Time deadline);
    [[noreturn]] void fail(const std::string& reason) const;

    int input_ = -1;
    int output_ = -1;
    int error_ = -1;
    std::string unread_;
    bool ended_ = false;
    ChildProcess process_;
};

/// The exit status and the remaining output of a program that has ended.
struct Ended {
    int status = -1;  ///< Minus the signal that ended it.
    std::string output;
    std::string complaints;
};
Ended runToEnd(const std::vector<std::string>& words, const RunningProgram::Setting& setting = {});
/// Reads a running program's output to the end and waits for its exit.
Ended remainsOf(RunningProgram& program);

/// Runs a program to its end and returns its output. Throws std::runtime_error with its messages if
/// it fails or does not end.
std::string outputOf(const std::vector<std::string>& words, const Environment& environment);

}  // namespace test
