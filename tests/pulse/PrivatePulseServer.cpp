#include "tests/pulse/PrivatePulseServer.hpp"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

// The program's arguments in the form that exec wants; valid as long as `words` is.
std::vector<char*> argumentVector(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
}

// In the child: does not return. The kernel ends the program with the test, however that ends.
[[noreturn]] void become(std::vector<std::string> words, int output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDIN_FILENO);
    dup2(output < 0 ? nothing : output, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execvp(words[0].c_str(), argumentVector(words).data());
    _exit(127);
}

std::string readAll(int descriptor) {
    std::string text;
    char buffer[4096];
    for (ssize_t got = 0; (got = read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(got));
    return text;
}

// "front-left: 24642 /  38% / -25.49 dB": the number two words before each percentage.
std::vector<unsigned> volumesIn(const std::string& text) {
    std::istringstream stream(text);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    std::vector<unsigned> volumes;
    for (std::size_t i = 2; i < words.size(); ++i)
        if (words[i].ends_with('%'))
            volumes.push_back(static_cast<unsigned>(std::stoul(words[i - 2])));
    return volumes;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words, int output) : id_(fork()) {
    if (id_ < 0) throw std::runtime_error("no process for " + words[0]);
    if (id_ == 0) become(words, output);
}

ChildProcess::~ChildProcess() {
    if (!id_) return;
    signal(SIGKILL);
    wait();
}

void ChildProcess::signal(int number) const {
    if (id_) kill(id_, number);
}

int ChildProcess::wait() {
    int status = -1;
    waitpid(std::exchange(id_, 0), &status, 0);
    return status;
}

void ChildProcess::waitUntilStopped() const {
    waitpid(id_, nullptr, WUNTRACED);
}

PrivatePulseServer::PrivatePulseServer() {
    std::string pattern = (std::filesystem::temp_directory_path() / "pulse-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    folder_ = pattern;
    const std::string path = folder_.string();
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH"})
        setenv(name, path.c_str(), 1);
    for (const char* name :
         {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "PULSE_SERVER", "PULSE_SINK", "PULSE_COOKIE"})
        unsetenv(name);
    setenv("LC_ALL", "C", 1);
}

PrivatePulseServer::~PrivatePulseServer() {
    process_ = {};
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PrivatePulseServer::writeScript() const {
    std::ofstream script(folder_ / "script.pa");
    script << "load-module module-null-sink sink_name=spk rate=48000\n"
              "load-module module-null-sink sink_name=hp rate=48000 "
              "sink_properties=\"device.form_factor=headphone\"\n";
    if (extension_ == Extension::StreamRestore) script << "load-module module-stream-restore\n";
    script << extraLines_ << "set-default-sink spk\n"
           << "load-module module-native-protocol-unix auth-anonymous=1 socket="
           << socket().string() << "\n";
}

void PrivatePulseServer::start() {
    writeScript();
    std::filesystem::remove(socket());
    process_ = ChildProcess({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                             "--disallow-exit", "--use-pid-file=no", "--high-priority=no",
                             "--realtime=no", "-F", (folder_ / "script.pa").string()});
}

void PrivatePulseServer::stop(int signal) {
    process_.signal(SIGCONT);
    process_.signal(signal);
    process_.wait();
}

void PrivatePulseServer::suspend() {
    process_.signal(SIGSTOP);
    process_.waitUntilStopped();
}

void PrivatePulseServer::resume() {
    process_.signal(SIGCONT);
}

std::string PrivatePulseServer::pactl(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {"pactl", "--server=" + address()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    int pipe[2];
    if (pipe2(pipe, O_CLOEXEC) != 0) throw std::runtime_error("no pipe for pactl");
    ChildProcess program(words, pipe[1]);
    close(pipe[1]);
    std::string output = readAll(pipe[0]);
    close(pipe[0]);
    if (program.wait() != 0) throw std::runtime_error("pactl " + arguments[0] + " failed");
    return output;
}

ChildProcess PrivatePulseServer::play(const std::string& role) const {
    return ChildProcess({"pacat", "--server=" + address(), "--playback",
                         "--property=media.role=" + role, "--raw", "/dev/zero"});
}

std::vector<unsigned> PrivatePulseServer::sinkVolumes(const std::string& sink) const {
    return volumesIn(pactl({"get-sink-volume", sink}));
}

std::vector<unsigned> PrivatePulseServer::streamVolumes() const {
    return volumesIn(pactl({"list", "sink-inputs"}));
}
