#include "shells/common/Backends.hpp"
#include "shells/common/BrokenPipes.hpp"
#include "shells/common/BundleLocation.hpp"
#include "shells/common/CommonOptions.hpp"
#include "shells/headless/InputLoop.hpp"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace headless;

constexpr const char* program = "tarnwick-headless";
constexpr const char* usage =
    "tarnwick-headless [OPTION ...] < COMMANDS\n"
    "Hosts the widget without a screen: commands on standard input, JSON lines on standard output.";
constexpr int exitMisuse = 2;

shell::Option parentWidthOption(std::optional<double>& width) {
    return {"--parent-width", "W", "a parent view controller whose view is W points wide",
            [&width](const std::string& value) -> Failure {
                width = parentWidthFrom({value});
                return width ? std::nullopt : Failure("W is a number from 0 to 100000");
            }};
}

shell::Option clockOption(ClockKind& clock) {
    return {"--clock", "manual|real",
            "whether only 'advance' moves the clock (the default: manual)",
            [&clock](const std::string& value) -> Failure {
                if (value != "manual" && value != "real") return "the clock is 'manual' or 'real'";
                clock = value == "real" ? ClockKind::Real : ClockKind::Manual;
                return std::nullopt;
            }};
}

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

int converse(const SessionOptions& options) {
    LineWriter output;
    Session session(options, makeSimulatedDevice(),
                    [&output](const std::string& line) { output.write(line); });
    switch (runInputLoop(session, STDIN_FILENO, [&output] { return output.isGood(); })) {
        case LoopEnd::Finished:
            return EXIT_SUCCESS;
        case LoopEnd::InputFailed:
            std::perror("tarnwick-headless: standard input");
            return EXIT_FAILURE;
        case LoopEnd::OutputFailed:
            std::fprintf(stderr, "%s: standard output was closed\n", program);
            return EXIT_FAILURE;
    }
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    shell::ignoreBrokenPipes();  // A reader that has gone is a failed write.
    shell::CommonOptions common;
    SessionOptions options;
    auto table = shell::commonOptions(common);
    table.push_back(parentWidthOption(options.parentWidth));
    table.push_back(clockOption(options.clock));
    const std::span<const char* const> arguments(argv + 1, argv + std::max(argc, 1));
    if (const auto error = shell::readOptions(table, arguments)) {
        std::fprintf(stderr, "%s: %s\n", program, error->c_str());
        return exitMisuse;
    }
    if (shell::answerQuestions(common, program, usage, table)) return EXIT_SUCCESS;

    shell::installBackends();
    shell::applyOptions(common);
    options.bundlePath = shell::bundlePath(common.bundle, shell::programDirectory());
    return converse(options);
}
