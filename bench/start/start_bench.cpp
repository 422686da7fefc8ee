// Starts a program and watches the screen from outside: how long until its fifth caption can be
// read there, and how much memory it then holds. Prints a line of JSON for each program.
//   start_bench RUNS PROGRAM... -- PROGRAM...
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Command = std::vector<char*>;

struct Sample {
    double milliseconds = 0;
    double proportionalKilobytes = 0;
};

constexpr auto longestStart = std::chrono::seconds(10);
// Memory is read this long after the caption appears, so that deferred work, such as looking for a
// session bus, is included.
constexpr auto settleTime = std::chrono::milliseconds(400);

// Where the fifth caption is, in the window's pixels.
constexpr int captionX = 20;
constexpr int captionY = 215;
constexpr int captionWidth = 60;
constexpr int captionHeight = 15;

class Watcher {
 public:
    Watcher() : display_(XOpenDisplay(nullptr)) {
        int error = 0;
        if (!display_ || !XDamageQueryExtension(display_, &damageEvent_, &error)) {
            std::fprintf(stderr, "start_bench: no X display with the DAMAGE extension\n");
            std::exit(EXIT_FAILURE);
        }
        // A window may be destroyed between an event and the request that answers it.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
        XSync(display_, False);
    }
    ~Watcher() { XCloseDisplay(display_); }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    /// Returns false if the caption did not appear in time.
    bool waitForCaption(Clock::time_point deadline) {
        while (Clock::now() < deadline) {
            if (XPending(display_) == 0) {
                pollfd connection = {ConnectionNumber(display_), POLLIN, 0};
                poll(&connection, 1, 100);
                continue;
            }
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type == MapNotify) {
                XDamageCreate(display_, event.xmap.window, XDamageReportNonEmpty);
                if (showsCaption(event.xmap.window)) return true;
            } else if (event.type == damageEvent_ + XDamageNotify) {
                const auto& damage = reinterpret_cast<XDamageNotifyEvent&>(event);
                XDamageSubtract(display_, damage.damage, None, None);
                if (showsCaption(damage.drawable)) return true;
            }
        }
        return false;
    }
    void forget() { XSync(display_, True); }

 private:
    /// Letters are bright on dark.
    bool showsCaption(Drawable window) {
        Window root = 0;
        int x = 0;
        int y = 0;
        unsigned width = 0;
        unsigned height = 0;
        unsigned border = 0;
        unsigned depth = 0;
        if (XGetGeometry(display_, window, &root, &x, &y, &width, &height, &border, &depth) == 0 ||
            width < captionX + captionWidth || height < captionY + captionHeight)
            return false;
        XImage* image = XGetImage(display_, window, captionX, captionY, captionWidth, captionHeight,
                                  AllPlanes, ZPixmap);
        if (!image) return false;
        bool bright = false;
        for (int row = 0; row < captionHeight && !bright; ++row)
            for (int column = 0; column < captionWidth && !bright; ++column)
                bright = (XGetPixel(image, column, row) & 0xFF) > 0xC0;
        XDestroyImage(image);
        return bright;
    }

    Display* display_;
    int damageEvent_ = 0;
};

pid_t start(Command& command) {
    const pid_t child = fork();
    if (child != 0) return child;
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDERR_FILENO);
    execv(command.front(), command.data());
    _exit(127);
}

double proportionalKilobytes(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;)
        if (double kilobytes = 0; word == "Pss:" && file >> kilobytes) return kilobytes;
    return 0;
}

Sample measure(Watcher& screen, Command& command) {
    screen.forget();
    const auto begin = Clock::now();
    const pid_t child = start(command);
    const bool seen = screen.waitForCaption(begin + longestStart);
    const std::chrono::duration<double, std::milli> took = Clock::now() - begin;
    std::this_thread::sleep_for(settleTime);
    const double memory = proportionalKilobytes(child);
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    if (!seen) {
        std::fprintf(stderr, "start_bench: %s shows no caption\n", command.front());
        std::exit(EXIT_FAILURE);
    }
    return {took.count(), memory};
}

double median(std::vector<Sample> samples, double Sample::*value) {
    std::ranges::sort(samples, {}, value);
    return samples[samples.size() / 2].*value;
}

std::vector<Command> commandsFrom(int count, char** words) {
    std::vector<Command> commands(1);
    for (int i = 0; i < count; ++i) {
        if (std::strcmp(words[i], "--") == 0)
            commands.emplace_back();
        else
            commands.back().push_back(words[i]);
    }
    for (Command& command : commands)
        command.push_back(nullptr);
    return commands;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: start_bench RUNS PROGRAM [ARGUMENT...] [-- PROGRAM...]\n");
        return 2;
    }
    const int runs = std::max(1, std::atoi(argv[1]));
    std::vector<Command> commands = commandsFrom(argc - 2, argv + 2);
    std::vector<std::vector<Sample>> samples(commands.size());
    Watcher screen;
    // The first run warms the disk cache and does not count. In turns, so that other load on the
    // machine affects all of them alike.
    for (int run = 0; run <= runs; ++run)
        for (std::size_t i = 0; i < commands.size(); ++i) {
            const Sample sample = measure(screen, commands[i]);
            if (run > 0) samples[i].push_back(sample);
        }
    for (std::size_t i = 0; i < commands.size(); ++i)
        std::printf("{\"program\":\"%s\",\"milliseconds\":%.1f,\"kilobytes\":%.0f}\n",
                    commands[i].front(), median(samples[i], &Sample::milliseconds),
                    median(samples[i], &Sample::proportionalKilobytes));
}
