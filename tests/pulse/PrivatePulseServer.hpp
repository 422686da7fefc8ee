#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// A program that was started by a test and ends with this.
class ChildProcess {
 public:
    ChildProcess() = default;
    /// Its standard output goes to that descriptor, or nowhere for -1.
    explicit ChildProcess(const std::vector<std::string>& words, int output = -1);
    ChildProcess(ChildProcess&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
    ChildProcess& operator=(ChildProcess&& other) noexcept {
        std::swap(id_, other.id_);
        return *this;
    }
    ~ChildProcess();

    void signal(int number) const;
    /// Waits for its end and answers its exit status.
    int wait();
    /// Waits until it is stopped by SIGSTOP.
    void waitUntilStopped() const;

 private:
    pid_t id_ = 0;
};

/// A PulseAudio of the test's own, with everything it keeps in a temporary folder, and gone with
/// it. Two devices without sound, "spk" (the default) and "hp", and the role entries.
class PrivatePulseServer {
 public:
    enum class Extension { StreamRestore, None };

    /// Makes the folder; start() starts the server. Also leads this process's own client library
    /// into the folder, away from the user's files.
    PrivatePulseServer();
    ~PrivatePulseServer();
    PrivatePulseServer(const PrivatePulseServer&) = delete;
    PrivatePulseServer& operator=(const PrivatePulseServer&) = delete;

    /// Before start(): the line of its script that loads one more sink, or an option's absence.
    void addScriptLine(const std::string& line) { extraLines_ += line + "\n"; }
    void setExtension(Extension extension) { extension_ = extension; }

    void start();
    /// Ends it by that signal and waits for its end.
    void stop(int signal);
    void suspend();
    void resume();

    std::string address() const { return "unix:" + socket().string(); }
    std::filesystem::path socket() const { return folder_ / "native"; }

    /// Runs the command line client against it and answers what it printed.
    std::string pactl(const std::vector<std::string>& arguments) const;
    /// Plays silence in that role until the process ends.
    ChildProcess play(const std::string& role) const;
    /// The volume of the only stream's channels; empty while there is none.
    std::vector<unsigned> streamVolumes() const;
    /// The volume of a sink's channels in the server's units, as that client prints them.
    std::vector<unsigned> sinkVolumes(const std::string& sink) const;

 private:
    void writeScript() const;

    std::filesystem::path folder_;
    std::string extraLines_;
    Extension extension_ = Extension::StreamRestore;
    ChildProcess process_;
};
