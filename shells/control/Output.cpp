#include "shells/control/Output.hpp"

#include "shells/common/Process.hpp"

#include <unistd.h>

namespace control {

bool Output::write(const std::string& text) {
    if (error_ == 0) error_ = shell::writeToStandardOutput(text);
    return error_ == 0;
}

bool Output::isTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

}  // namespace control
