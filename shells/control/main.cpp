#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/NSLog.hpp"
#include "shells/common/Process.hpp"
#include "shells/control/Control.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace {

constexpr const char* program = "tarnwickctl";
constexpr int exitCannot = 1;
constexpr int exitMisuse = 2;

bool prints(control::Verb verb) {
    using control::Verb;
    return verb == Verb::List || verb == Verb::Get || verb == Verb::Watch;
}

}  // namespace

int main(int argc, char** argv) {
    const bool hasOutput = shell::prepareProcess();
    control::Request request;
    const std::span<const char* const> arguments(argv + 1, argv + std::max(argc, 1));
    if (const auto error = control::readRequest(request, arguments)) {
        shell::complainOfMisuse(program, *error);
        return exitMisuse;
    }
    if (!hasOutput && prints(request.verb)) {
        complain(program, shell::outputComplaint(EBADF));
        return exitCannot;
    }
    if (const auto status = control::answerQuestions(request, program)) return *status;

    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    shell::applyOptions(request.common);
    return control::Control(request).run();
}
