#include "shells/common/Installation.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/headless/HeadlessOptions.hpp"
#include "shells/headless/InputLoop.hpp"
#include "shells/sound/SoundModule.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace headless;

constexpr const char* usage =
    "tarnwick-headless [OPTION ...] < COMMANDS\n"
    "Hosts the widget without a screen: commands on standard input, JSON lines on standard output.";
constexpr int exitMisuse = 2;

/// Writes lines to standard output, each at once.
class LineWriter {
 public:
    void write(const std::string& line) {
        good_ = good_ && std::fputs((line + "\n").c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    }
    bool isGood() const { return good_; }

 private:
    bool good_ = true;
};

int converse(const SessionOptions& options, Device device) {
    LineWriter output;
    Session session(options, std::move(device),
                    [&output](const std::string& line) { output.write(line); });
    switch (runInputLoop(session, STDIN_FILENO, [&output] { return output.isGood(); })) {
        case LoopEnd::Finished:
            return EXIT_SUCCESS;
        case LoopEnd::InputFailed:
            return shell::complain(EXIT_FAILURE,
                                   std::string("standard input: ") + std::strerror(errno));
        case LoopEnd::OutputFailed:
            return shell::complain(EXIT_FAILURE, "standard output was closed");
    }
    return EXIT_FAILURE;
}

int host(const HeadlessOptions& chosen) {
    SessionOptions options;
    const auto& bundles = chosen.common.bundles;
    options.bundlePath =
        bundles.empty() ? shell::bundlePath(shell::programDirectory()) : bundles.back();
    options.parentWidth = chosen.parentWidth;
    options.clock = chosen.clock();
    if (chosen.server == ServerKind::Simulated) return converse(options, Device::simulated());
    const auto module = shell::loadSoundModule(
        shell::modulePath(shell::soundServerModule, shell::programDirectory()));
    const auto server = shell::openSoundServer(module, chosen.serverAddress);
    if (!server) return shell::complain(EXIT_FAILURE, server.error());
    return converse(options, Device::on(*server));
}

}  // namespace

int main(int argc, char** argv) {
    shell::prepareProcess("tarnwick-headless");
    HeadlessOptions options;
    const auto table = headlessOptions(options);
    const std::span<const char* const> arguments(argv + 1, argv + std::max(argc, 1));
    auto error = shell::readOptions(table, arguments);
    if (!error) error = contradictionIn(options);
    if (error) return shell::complain(exitMisuse, *error);
    if (const auto status = shell::answerQuestions(options.common, usage, table)) return *status;

    shell::installBackends();
    shell::applyOptions(options.common);
    return host(options);
}
