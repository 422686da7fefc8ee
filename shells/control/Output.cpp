#include "shells/control/Output.hpp"

#include <unistd.h>

#include <cerrno>
#include <string_view>

namespace control {

bool Output::write(const std::string& text) {
    std::string_view rest = text;
    while (error_ == 0 && !rest.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (count >= 0)
            rest.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            error_ = errno;
    }
    return error_ == 0;
}

bool Output::isTerminal() {
    return isatty(STDOUT_FILENO) != 0;
}

}  // namespace control
