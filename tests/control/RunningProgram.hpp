#pragma once

#include "tests/rigs/ChildProcess.hpp"

#include <optional>
#include <string>
#include <vector>

namespace test {

/// A program that runs, with its standard output to be read line by line. Every wait has a
/// deadline; what does not come in time is thrown as a std::runtime_error.
class RunningProgram {
 public:
    enum class Output { Pipe, Terminal };

    explicit RunningProgram(const std::vector<std::string>& words, Output output = Output::Pipe,
                            const rigs::Environment& environment = {});
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// The next line without its end; nullopt at the end of the output.
    std::optional<std::string> nextLine();
    /// The next line if one comes soon.
    std::optional<std::string> lineSoon();
    void closeOutput();
    void signal(int number) const { process_.signal(number); }
    /// Waits for its end; its exit status, or minus the signal that ended it.
    int finish();
    /// What it has written to standard error so far.
    std::string complaints() const;

 private:
    std::optional<std::string> lineWithin(double seconds);

    int output_ = -1;
    int error_ = -1;
    std::string unread_;
    bool ended_ = false;
    rigs::ChildProcess process_;
};

/// What a program that has ended left behind.
struct Ended {
    int status = -1;  ///< Minus the signal that ended it.
    std::string output;
    std::string complaints;
};
Ended runToEnd(const std::vector<std::string>& words, const rigs::Environment& environment = {});

}  // namespace test
