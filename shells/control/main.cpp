#include "backends/plist/PlistCodec.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/control/Control.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace {

constexpr int exitCannot = 1;
constexpr int exitMisuse = 2;

bool prints(control::Verb verb) {
    using control::Verb;
    return verb == Verb::List || verb == Verb::Get || verb == Verb::Watch || verb == Verb::Outputs;
}

}  // namespace

int main(int argc, char** argv) {
    const bool hasOutput = shell::prepareProcess("tarnwickctl");
    shell::beginTranslations();
    control::Request request;
    const std::span<const char* const> arguments(argv + 1, argv + std::max(argc, 1));
    if (const auto error = control::readRequest(request, arguments)) {
        shell::complainOfMisuse(*error);
        return exitMisuse;
    }
    // A program reads it, and perhaps passes on what it cannot understand.
    if (request.form == control::Form::Json) shell::speakEnglish();
    if (!hasOutput && prints(request.verb))
        return shell::complain(exitCannot, shell::outputComplaint(EBADF));
    if (const auto status = control::answerQuestions(request)) return *status;

    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    shell::applyOptions(request.common);
    return control::Control(request).run();
}
