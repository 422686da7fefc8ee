#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// Variables that a program gets on top of this process's own; an empty one is taken away.
using Environment = std::map<std::string, std::string>;

/// A program that a test has started and that ends with this, and with the test however that ends.
class ChildProcess {
 public:
    struct Setting {
        Environment environment{};
        int input = -1;               ///< Its standard input; -1 for nothing to read.
        int output = -1;              ///< Its standard output; -1 for nowhere.
        int error = -1;               ///< Its standard error; -1 for the log.
        std::filesystem::path log{};  ///< Appended to; empty for nowhere.
    };

    ChildProcess() = default;
    /// `words` are the program, looked up in PATH, and its arguments. What cannot be run ends with
    /// 127, and says so in the log.
    explicit ChildProcess(const std::vector<std::string>& words);
    ChildProcess(const std::vector<std::string>& words, const Setting& setting);
    ChildProcess(ChildProcess&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    ChildProcess& operator=(ChildProcess&& other) noexcept {
        std::swap(id_, other.id_);
        return *this;
    }
    ~ChildProcess();

    explicit operator bool() const { return id_ != 0; }
    /// 0 when there is none.
    pid_t id() const { return id_; }
    void signal(int number) const;
    /// Waits for its end and answers its status as waitpid() tells it; -1 when there was none.
    int wait();
    /// The same, for no longer than that many seconds; nullopt when it still runs then.
    std::optional<int> waitAtMost(double seconds);
    /// Whether it has ended by itself.
    bool hasEnded();
    /// Waits until it is stopped by SIGSTOP.
    void waitUntilStopped() const;

 private:
    pid_t id_ = 0;
};

/// How often a process has gone to sleep so far, all its threads together.
long sleepsOf(pid_t process);
/// The processor's time that a process of one's own has used so far, seconds.
double processorSecondsOf(pid_t process);

}  // namespace test
