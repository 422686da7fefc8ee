#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/NSLog.hpp"
#include "shells/common/BrokenPipes.hpp"
#include "shells/control/Control.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr const char* program = "tarnwickctl";
constexpr int exitCannot = 1;
constexpr int exitMisuse = 2;

/// Keeps the standard descriptors taken, so that no connection is given the number of one that the
/// caller had closed, and is written to in its place. False when standard output was closed.
bool holdStandardDescriptors() {
    bool hasOutput = true;
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) >= 0) continue;
        open("/dev/null", O_RDWR);
        hasOutput = hasOutput && descriptor != STDOUT_FILENO;
    }
    return hasOutput;
}

}  // namespace

int main(int argc, char** argv) {
    shell::ignoreBrokenPipes();
    const bool hasOutput = holdStandardDescriptors();
    control::Request request;
    const std::span<const char* const> arguments(argv + 1, argv + std::max(argc, 1));
    if (const auto error = control::readRequest(request, arguments)) {
        shell::complainOfMisuse(program, *error);
        return exitMisuse;
    }
    if (!hasOutput && request.verb != control::Verb::Set) {
        complain(program, "standard output is closed");
        return exitCannot;
    }
    if (control::answerQuestions(request, program)) return EXIT_SUCCESS;

    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    shell::applyOptions(request.common);
    return control::Control(request).run();
}
